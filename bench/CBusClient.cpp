/* SPDX-License-Identifier: MIT */
#include "bench/CBusClient.h"

#include "tests/support/CInterruption.h"
#include "tests/support/Timeouts.h"

#include <QEventLoop>
#include <QProcess>
#include <QSocketNotifier>
#include <QTimer>

#include <cstdint>
#include <memory>
#include <stdexcept>
#include <system_error>

namespace
{

const char* const BUS = "org.freedesktop.DBus";
const char* const BUS_PATH = "/org/freedesktop/DBus";
const char* const CODEC = "velmar.mobilygen";

const std::uint64_t MICROSECONDS_TO_CALL = TIMEOUT_CALL_MS * std::uint64_t{1000};

struct SUnref {
    void operator()(sd_bus_message* pcMessage) const { sd_bus_message_unref(pcMessage); }
    void operator()(sd_bus_slot* pcSlot) const { sd_bus_slot_unref(pcSlot); }
};
using CMessage = std::unique_ptr<sd_bus_message, SUnref>;
using CSlot = std::unique_ptr<sd_bus_slot, SUnref>;

/// An error reply, emptied with the object.
struct SError {
    SError() = default;
    ~SError() { sd_bus_error_free(&sError); }
    SError(const SError&) = delete;
    SError& operator=(const SError&) = delete;

    sd_bus_error sError = {};
};

int checked(int iResult, const char* pszWhat)
{
    if (iResult < 0) {
        CInterruption::check();
        throw std::system_error(-iResult, std::generic_category(), pszWhat);
    }
    return iResult;
}

CMessage call(sd_bus* pcBus, sd_bus_message* pcCall)
{
    SError sError;
    sd_bus_message* pcReply = nullptr;
    const int iResult = sd_bus_call(pcBus, pcCall, MICROSECONDS_TO_CALL, &sError.sError, &pcReply);
    if (iResult < 0 && sError.sError.message != nullptr) {
        CInterruption::check();
        throw std::runtime_error(sError.sError.message);
    }
    checked(iResult, sd_bus_message_get_member(pcCall));
    return CMessage(pcReply);
}

bool hasOwner(sd_bus* pcBus, const std::string& rcName)
{
    sd_bus_message* pcMessage = nullptr;
    checked(sd_bus_message_new_method_call(pcBus, &pcMessage, BUS, BUS_PATH, BUS, "NameHasOwner"),
            "NameHasOwner");
    const CMessage cCall(pcMessage);
    checked(sd_bus_message_append(cCall.get(), "s", rcName.c_str()), "NameHasOwner");
    int iOwned = 0;
    checked(sd_bus_message_read(call(pcBus, cCall.get()).get(), "b", &iOwned), "NameHasOwner");
    return iOwned != 0;
}

void process(sd_bus* pcBus)
{
    while (checked(sd_bus_process(pcBus, nullptr), "sd_bus_process") > 0) {
    }
}

int noteOwner(sd_bus_message* pcSignal, void* pvOwned, sd_bus_error* /*psError*/)
{
    const char* pszName = nullptr;
    const char* pszOldOwner = nullptr;
    const char* pszNewOwner = nullptr;
    const int iResult = sd_bus_message_read(pcSignal, "sss", &pszName, &pszOldOwner, &pszNewOwner);
    if (iResult > 0)
        *static_cast<bool*>(pvOwned) = *pszNewOwner != '\0';
    return iResult;
}

// Whether the name has an owner, now and, as long as the slot lives, after each process().
CSlot watch(sd_bus* pcBus, const std::string& rcName, bool& rbOwned)
{
    const std::string cMatch = "type='signal',sender='org.freedesktop.DBus',interface='org.freedesktop.DBus',"
                               "member='NameOwnerChanged',arg0='" +
                               rcName + "'";
    sd_bus_slot* pcSlot = nullptr;
    checked(sd_bus_add_match(pcBus, &pcSlot, cMatch.c_str(), noteOwner, &rbOwned), "sd_bus_add_match");
    CSlot cSlot(pcSlot);
    // The change may have been quicker than the match.
    rbOwned = hasOwner(pcBus, rcName);
    process(pcBus);
    return cSlot;
}

} // namespace

CBusClient::CBusClient(const std::string& rcAddress) : m_pcBus(nullptr)
{
    checked(sd_bus_new(&m_pcBus), "sd_bus_new");
    checked(sd_bus_set_address(m_pcBus, rcAddress.c_str()), "sd_bus_set_address");
    checked(sd_bus_set_bus_client(m_pcBus, 1), "sd_bus_set_bus_client");
    checked(sd_bus_start(m_pcBus), "sd_bus_start");
}

CBusClient::~CBusClient()
{
    sd_bus_close_unref(m_pcBus);
}

bool CBusClient::waitForName(const std::string& rcName, const QProcess& rcOwner)
{
    enum { READABLE, ENDED, LATE };
    QEventLoop cLoop;
    const QSocketNotifier cBus(sd_bus_get_fd(m_pcBus), QSocketNotifier::Read);
    QObject::connect(&cBus, &QSocketNotifier::activated, &cLoop, [&cLoop] { cLoop.exit(READABLE); });
    QObject::connect(&rcOwner, &QProcess::stateChanged, &cLoop, [&cLoop](QProcess::ProcessState eState) {
        if (eState == QProcess::NotRunning)
            cLoop.exit(ENDED);
    });
    QTimer::singleShot(TIMEOUT_PROCESS_MS, &cLoop, [&cLoop] { cLoop.exit(LATE); });
    bool bOwned = false;
    const CSlot cSlot = watch(m_pcBus, rcName, bOwned);
    while (!bOwned) {
        if (cLoop.exec() != READABLE)
            return false;
        CInterruption::check();
        process(m_pcBus);
    }
    return true;
}

void CBusClient::waitForEndOfName(const std::string& rcName)
{
    bool bOwned = true;
    const CSlot cSlot = watch(m_pcBus, rcName, bOwned);
    while (bOwned) {
        if (checked(sd_bus_wait(m_pcBus, MICROSECONDS_TO_CALL), "sd_bus_wait") == 0)
            throw std::runtime_error(rcName + ": owned by a process that has ended");
        process(m_pcBus);
    }
}

int CBusClient::get(const std::string& rcName, const char* pszObject, const char* pszMethod)
{
    return call(rcName, pszObject, pszMethod, "");
}

void CBusClient::listen(const std::string& rcName, const char* pszObject, const char* pszSignal)
{
    const std::string cMatch = "type='signal',sender='" + rcName + "',path='/" + pszObject +
                               "',interface='velmar.haldend." + pszObject + "',member='" + pszSignal + "'";
    checked(sd_bus_add_match(m_pcBus, nullptr, cMatch.c_str(), noteSignal, this), pszSignal);
}

int CBusClient::noteSignal(sd_bus_message* pcSignal, void* pvClient, sd_bus_error* /*psError*/)
{
    int iValue = 0;
    const int iResult = sd_bus_message_read(pcSignal, "i", &iValue);
    if (iResult > 0)
        static_cast<CBusClient*>(pvClient)->m_cSignals.push_back(iValue);
    return iResult;
}

int CBusClient::waitForSignal()
{
    process(m_pcBus);
    while (m_cSignals.empty()) {
        if (checked(sd_bus_wait(m_pcBus, MICROSECONDS_TO_CALL), "sd_bus_wait") == 0)
            throw std::runtime_error("a signal didn't come");
        process(m_pcBus);
    }
    const int iValue = m_cSignals.front();
    m_cSignals.pop_front();
    return iValue;
}

sd_bus_message* CBusClient::newCall(const std::string& rcName, const char* pszObject, const char* pszMethod)
{
    const std::string cPath = std::string("/") + pszObject;
    const std::string cInterface = std::string("velmar.haldend.") + pszObject;
    sd_bus_message* pcMessage = nullptr;
    checked(sd_bus_message_new_method_call(m_pcBus, &pcMessage, rcName.c_str(), cPath.c_str(),
                                           rcName == CODEC ? nullptr : cInterface.c_str(), pszMethod),
            pszMethod);
    return pcMessage;
}

int CBusClient::reply(sd_bus_message* pcCall, int iAppended)
{
    const CMessage cCall(pcCall);
    const char* pszMethod = sd_bus_message_get_member(pcCall);
    checked(iAppended, pszMethod);
    const CMessage cReply = ::call(m_pcBus, pcCall);
    int iValue = 0;
    if (sd_bus_message_is_empty(cReply.get()) == 0)
        checked(sd_bus_message_read(cReply.get(), "i", &iValue), pszMethod);
    return iValue;
}

void CBusClient::sendOneWay(sd_bus_message* pcCall, int iAppended)
{
    const CMessage cCall(pcCall);
    checked(iAppended, sd_bus_message_get_member(pcCall));
    checked(sd_bus_message_set_expect_reply(pcCall, 0), sd_bus_message_get_member(pcCall));
    checked(sd_bus_send(m_pcBus, pcCall, nullptr), sd_bus_message_get_member(pcCall));
}
