#include "daemon/CMultimediaDaemon.h"

#include "daemon/CBusWatch.h"
#include "daemon/CEventLogger.h"
#include "daemon/CHeapTrimmer.h"
#include "daemon/CSignalHook.h"
#include "dbus/CHaldenDebug.h"
#include "dbus/CHaldenVideoDisplay.h"
#include "dbus/CHaldenVideoOverlay.h"
#include "dbus/CHaldenVideoProcessing.h"
#include "overlay/COverlayObjectManager.h"
#include "overlay/CVideoOverlayBackEnd.h"
#include "overlay/CVideoOverlayFrontEnd.h"
#include "platform/CMultimediaPlatform.h"
#include "video/CVideoProcessor.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusError>

const char* const CMultimediaDaemon::DBUS_SERVICE = "velmar.haldend";

CMultimediaDaemon* CMultimediaDaemon::m_pcInstance = nullptr;

CMultimediaDaemon::CMultimediaDaemon()
    : m_pcSignalHook(new CSignalHook),
      m_pcOverlayObjectManager(new COverlayObjectManager),
      m_pcVideoOverlayBackEnd(new CVideoOverlayBackEnd),
      m_pcVideoOverlayFrontEnd(
          new CVideoOverlayFrontEnd(*m_pcVideoOverlayBackEnd, *m_pcOverlayObjectManager)),
      m_pcVideoProcessor(new CVideoProcessor),
      m_pcDebug(new CHaldenDebug),
      m_pcVideoDisplay(new CHaldenVideoDisplay),
      m_pcVideoOverlay(new CHaldenVideoOverlay(*m_pcVideoOverlayFrontEnd)),
      m_pcVideoProcessing(new CHaldenVideoProcessing(*m_pcVideoProcessor)),
      m_pcBusWatch(new CBusWatch),
      m_pcHeapTrimmer(new CHeapTrimmer)
{
}

CMultimediaDaemon::~CMultimediaDaemon()
{
    // The bus objects first, so that no call reaches what is gone; the signal hook last, so that a second
    // signal during the shutdown is still caught.
    delete m_pcHeapTrimmer;
    delete m_pcBusWatch;
    delete m_pcDebug;
    delete m_pcVideoDisplay;
    delete m_pcVideoOverlay;
    delete m_pcVideoProcessing;
    delete m_pcVideoProcessor;
    delete m_pcVideoOverlayFrontEnd;
    delete m_pcVideoOverlayBackEnd;
    delete m_pcOverlayObjectManager;
    delete m_pcSignalHook;
    CMultimediaPlatform::finalize();
}

CMultimediaDaemon& CMultimediaDaemon::getInstance()
{
    if (m_pcInstance == nullptr)
        m_pcInstance = new CMultimediaDaemon;
    return *m_pcInstance;
}

bool CMultimediaDaemon::performStartup(const char* pszI2CPort, const char* pszFPGAFrameBuffer,
                                       const char* pszLimeFrameBuffer)
{
    CMultimediaDaemon& cMultimediaDaemon = getInstance();

    if (!cMultimediaDaemon.m_pcSignalHook->install()) {
        CEventLogger::logMessage(CEventLogger::eLogLevelError, "cMultimediaDaemon.m_pcSignalHook->install()");
        return false;
    }
    if (!cMultimediaDaemon.initSubsystems(pszI2CPort, pszFPGAFrameBuffer, pszLimeFrameBuffer)) {
        CEventLogger::logMessage(CEventLogger::eLogLevelError, "cMultimediaDaemon.initSubsystems()");
        return false;
    }
    if (!cMultimediaDaemon.setupDBusConnections()) {
        CEventLogger::logMessage(CEventLogger::eLogLevelError, "cMultimediaDaemon.setupDBusConnections()");
        return false;
    }
    return registerServiceName();
}

bool CMultimediaDaemon::registerServiceName()
{
    // Until the event loop runs, Qt holds back what comes from the bus, also the loss of the bus, and then the
    // call below would wait for ever. An event in the queue switches the delivery on.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);
    QDBusConnection cConnection = QDBusConnection::systemBus();
    if (cConnection.registerService(DBUS_SERVICE))
        return true;
    // Informational, both: a second instance is an everyday mistake, and its end is logged as the error.
    CEventLogger::logMessage(CEventLogger::eLogLevelInformational,
                             "cConnection.registerService(DBUS_SERVICE)");
    const QString cError = QDBusError::errorString(cConnection.lastError().type());
    CEventLogger::logMessage(CEventLogger::eLogLevelInformational, cError.toLatin1().constData());
    return false;
}

void CMultimediaDaemon::performShutdown()
{
    if (m_pcInstance != nullptr)
        m_pcInstance->m_pcVideoProcessor->finishAccepted();
    delete m_pcInstance;
    m_pcInstance = nullptr;
}

bool CMultimediaDaemon::initSubsystems(const char* pszI2CPort, const char* pszFPGAFrameBuffer,
                                       const char* pszLimeFrameBuffer)
{
    return CMultimediaPlatform::initialize(pszI2CPort, pszFPGAFrameBuffer, pszLimeFrameBuffer) != 0 &&
           m_pcVideoProcessor->initialize(pszI2CPort);
}

bool CMultimediaDaemon::setupDBusConnections()
{
    return m_pcDebug->setupDBusConnection() && m_pcVideoDisplay->setupDBusConnection() &&
           m_pcVideoOverlay->setupDBusConnection() && m_pcVideoProcessing->setupDBusConnection() &&
           m_pcBusWatch->start();
}
