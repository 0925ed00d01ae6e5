#ifndef HALDEND_BENCH_CBUSCLIENT_H
#define HALDEND_BENCH_CBUSCLIENT_H

#include <string>

#include <systemd/sd-bus.h>

class CProcess;

/// The one client of all services: what it costs is the same for each of them, and small. An object is named by
/// the last part of its interface: "videodisplay" is "velmar.haldend.videodisplay" at "/videodisplay".
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

    /// Waits until a process that was just started owns its name. Its end before that is a failure.
    void waitForName(const std::string& rcName, const CProcess& rcOwner);

    /// Waits until the bus has noticed that a name's owner has ended.
    void waitForEndOfName(const std::string& rcName);

    /// Calls a method without arguments whose result is an integer, waits for its reply, and gives the value.
    int get(const std::string& rcName, const char* pszObject, const char* pszMethod);

    /// Sends a call that expects no reply, and doesn't wait. Types and arguments are those of
    /// sd_bus_message_append().
    template <typename... TArguments>
    void send(const std::string& rcName, const char* pszObject, const char* pszMethod, const char* pszTypes,
              TArguments... arguments)
    {
        sd_bus_message* pcCall = newOneWay(rcName, pszObject, pszMethod);
        sendOneWay(pcCall, sd_bus_message_append(pcCall, pszTypes, arguments...));
    }

private:
    sd_bus_message* newOneWay(const std::string& rcName, const char* pszObject, const char* pszMethod);

    /// Sends a message that newOneWay() gave and releases it. iAppended is how filling it went.
    void sendOneWay(sd_bus_message* pcCall, int iAppended);

    sd_bus* m_pcBus;
};

#endif
