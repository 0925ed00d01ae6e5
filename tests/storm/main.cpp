/* SPDX-License-Identifier: MIT */
/* A storm of calls: see CStorm. */
#include "tests/storm/CStorm.h"
#include "tests/support/CInterruption.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QElapsedTimer>

#include <cstdio>
#include <exception>

int main(int iCount, char** ppszArguments)
{
    QCoreApplication cApplication(iCount, ppszArguments);
    QCommandLineParser cParser;
    cParser.setApplicationDescription(QStringLiteral(
        "Lets four clients call a daemon of its own at once, while everything around it fails. Ends with 1 "
        "if the daemon doesn't do what it should."));
    cParser.addHelpOption();
    cParser.addOptions({
        {QStringLiteral("calls"), QStringLiteral("How many calls; 50000 by default."),
         QStringLiteral("NUMBER"),                                                                                          QStringLiteral("50000")},
        {QStringLiteral("seed"),                       QStringLiteral("Draws the calls of an earlier run; else others."),
         QStringLiteral("NUMBER")},
    });
    cParser.process(cApplication);
    const quint32 u32Seed = cParser.isSet(QStringLiteral("seed"))
                                ? cParser.value(QStringLiteral("seed")).toUInt()
                                : QRandomGenerator::global()->generate();
    std::printf("storm --calls %s --seed %u\n", qPrintable(cParser.value(QStringLiteral("calls"))), u32Seed);
    std::fflush(stdout);
    const QVector<CInterfaces::SMethod> cMethods = CInterfaces::read(HALDEND_INTERFACE_DIR);
    QElapsedTimer cClock;
    cClock.start();
    try {
        CStorm cStorm(cMethods, u32Seed);
        cStorm.run(cParser.value(QStringLiteral("calls")).toInt());
        std::printf("%s\n%lld s\n", cStorm.describe().constData(),
                    static_cast<long long>(cClock.elapsed() / 1000));
    } catch (const std::exception& rcError) {
        std::fprintf(stderr, "%s\n", rcError.what());
        return 1;
    }
    return 0;
}
