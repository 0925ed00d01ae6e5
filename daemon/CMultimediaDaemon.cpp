/* SPDX-License-Identifier: MIT */
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
    // The bus objects go first, so that no call reaches a deleted object. The signal hook goes last, so that
    // it still catches a second signal during the shutdown.
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
    // Until the event loop runs, Qt holds back messages from the bus, even the loss of the bus; the call
    // below would then wait for ever. An event in the queue starts the delivery.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);
    QDBusConnection cConnection = QDBusConnection::systemBus();
    if (cConnection.registerService(DBUS_SERVICE))
        return true;
    // Kept: both at the informational level. A second instance is an everyday mistake, and service staff
    // filter for errors; the end of the process is logged as one.
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
