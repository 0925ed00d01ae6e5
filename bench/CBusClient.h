/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BENCH_CBUSCLIENT_H
#define HALDEND_BENCH_CBUSCLIENT_H

#include <deque>
#include <string>

#include <systemd/sd-bus.h>

class QProcess;

/// The one client of all services: what it costs is the same for each of them, and small. An object is named by
/// the last part of its interface: "videodisplay" is "velmar.haldend.videodisplay" at "/videodisplay".
///
/// The codec service is "velmar.mobilygen"; its methods go without an interface, as the daemon calls them.
///
/// All failures are thrown: std::system_error from the connection, std::runtime_error with the text of an
/// error reply.
class CBusClient
{
public:
    explicit CBusClient(const std::string& rcAddress);
    ~CBusClient();

    CBusClient(const CBusClient&) = delete;
    CBusClient& operator=(const CBusClient&) = delete;

    /// Waits until a process that was just started owns its name. False if it ends before that, or doesn't get there.
    bool waitForName(const std::string& rcName, const QProcess& rcOwner);

    /// Waits until the bus has noticed that a name's owner has ended.
    void waitForEndOfName(const std::string& rcName);

    /// Calls a method without arguments whose result is an integer, waits for its reply, and gives the value.
    int get(const std::string& rcName, const char* pszObject, const char* pszMethod);

    /// Calls a method, waits for its reply, and gives the integer in it; 0 if it is empty. Types and arguments are those
    /// of sd_bus_message_append().
    template <typename... TArguments>
    int call(const std::string& rcName, const char* pszObject, const char* pszMethod, const char* pszTypes,
             TArguments... arguments)
    {
        sd_bus_message* pcCall = newCall(rcName, pszObject, pszMethod);
        return reply(pcCall, sd_bus_message_append(pcCall, pszTypes, arguments...));
    }

    /// Remembers such signals from now on.
    void listen(const std::string& rcName, const char* pszObject, const char* pszSignal);

    /// Waits for one that hasn't been waited for, and gives the integer in it.
    int waitForSignal();

    /// Sends a call that expects no reply, and doesn't wait. Types and arguments are those of
    /// call().
    template <typename... TArguments>
    void send(const std::string& rcName, const char* pszObject, const char* pszMethod, const char* pszTypes,
              TArguments... arguments)
    {
        sd_bus_message* pcCall = newCall(rcName, pszObject, pszMethod);
        sendOneWay(pcCall, sd_bus_message_append(pcCall, pszTypes, arguments...));
    }

private:
    sd_bus_message* newCall(const std::string& rcName, const char* pszObject, const char* pszMethod);

    /// Send a message that newCall() gave and release it. iAppended is how filling it went.
    int reply(sd_bus_message* pcCall, int iAppended);
    void sendOneWay(sd_bus_message* pcCall, int iAppended);

    static int noteSignal(sd_bus_message* pcSignal, void* pvClient, sd_bus_error* psError);

    sd_bus* m_pcBus;
    std::deque<int> m_cSignals; ///< values of those that came
};

#endif
