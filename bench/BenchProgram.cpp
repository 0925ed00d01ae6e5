/* SPDX-License-Identifier: MIT */
#include "bench/BenchProgram.h"

#include "tests/support/CInterruption.h"

#include <cstring>
#include <exception>
#include <iostream>

namespace
{

const QString HELP = QStringLiteral("help");

} // namespace

CBenchProgram::CBenchProgram(int& riCount, char** ppszArguments, const QString& rcPurpose)
    : m_cApplication(riCount, ppszArguments)
{
    m_cParser.setApplicationDescription(
        rcPurpose +
        QStringLiteral("\n\nExit status: 0 measured, whatever came out; 1 not measured; 2 wrong options."));
    m_cParser.addOption({HELP, QStringLiteral("this text")});
}

void CBenchProgram::addNumber(const QString& rcName, int iMin, int iMax, int& riNumber,
                              const QString& rcDescription)
{
    m_cParser.addOption(
        {rcName, QStringLiteral("%1, at least %2; default %3").arg(rcDescription).arg(iMin).arg(riNumber),
         QStringLiteral("N")});
    m_cOptions.push_back({rcName, [iMin, iMax, &riNumber](const QString& rcValue) {
                              bool bNumber = false;
                              riNumber = rcValue.toInt(&bNumber);
                              return bNumber && riNumber >= iMin && riNumber <= iMax;
                          }});
}

void CBenchProgram::addText(const QString& rcName, const QString& rcValueName, QString& rcText,
                            const QString& rcDescription)
{
    m_cParser.addOption({rcName, rcDescription, rcValueName});
    m_cOptions.push_back({rcName, [&rcText](const QString& rcValue) {
                              rcText = rcValue;
                              return true;
                          }});
}

bool CBenchProgram::takeOptions() const
{
    for (const SOption& rsOption : m_cOptions)
        if (m_cParser.isSet(rsOption.cName) && !rsOption.fnTake(m_cParser.value(rsOption.cName)))
            return false;
    return m_cParser.positionalArguments().isEmpty();
}

int CBenchProgram::run(const std::function<void()>& rcWork)
{
    const bool bParsed = m_cParser.parse(QCoreApplication::arguments());
    if (bParsed && m_cParser.isSet(HELP)) {
        std::cout << qPrintable(m_cParser.helpText());
        return 0;
    }
    if (!bParsed || !takeOptions()) {
        std::cerr << qPrintable(m_cParser.helpText());
        return 2;
    }
    CInterruption::install();
    try {
        rcWork();
    } catch (const CInterruption& rcInterruption) {
        return 128 + rcInterruption.signal();
    } catch (const std::exception& rcError) {
        std::cerr << qPrintable(QCoreApplication::applicationName()) << ": " << rcError.what() << '\n';
        return 1;
    }
    return std::cout.flush() ? 0 : 1;
}

CRoundStatistics measureRounds(int iRounds, const std::function<CRoundStatistics::CRound(int)>& rcMeasure)
{
    CRoundStatistics cStatistics;
    for (int iRound = 0; iRound < WARM_UP_ROUNDS + iRounds; ++iRound) {
        CInterruption::check();
        const CRoundStatistics::CRound cRound = rcMeasure(iRound);
        if (iRound >= WARM_UP_ROUNDS)
            cStatistics.add(cRound);
    }
    return cStatistics;
}

void printRatios(const CRatioTable& rcTable, const std::string& rcRounds)
{
    std::cout << rcTable.text() << "\nMedians of " << rcRounds
              << "; the ratio is the median of the rounds' ratios.\n";
    warnOfOtherBuilds();
}

void warnOfOtherBuilds()
{
    if (strcmp(BENCH_BUILD_TYPE, "Release") != 0)
        std::cout << "This is no release build: its figures say nothing about what is shipped.\n";
}
