/* SPDX-License-Identifier: MIT */
/* Every command of haldenctl: one row each. Parser, help, completion, manual page and tests read this table. */
#ifndef HALDEND_CTL_COMMANDTABLE_H
#define HALDEND_CTL_COMMANDTABLE_H

#include <QStringList>

class CCommandRun;

/// How a word of the command line is read.
enum EArgumentType {
    eNumber,   ///< a whole number from iMin to iMax
    eSwitch,   ///< on, off, true, false, 1 or 0
    eLetters,  ///< a text for the overlay: its letters are checked
    eText,     ///< any text
    eFile,     ///< a file name; made absolute
    eHandle,   ///< a text's handle; left out when --id names the text
    ePosition, ///< X,Y: column and row
    eColors,   ///< FG or FG,BG: numbers or names
    eTime,     ///< H:M:S or H:M:S:F
    eWord,     ///< one of pszWords
    eRest,     ///< all words that follow; there may be none
};

struct SArgument {
    const char* pszName; ///< as the help shows it
    EArgumentType eType;
    int iMin = 0;
    int iMax = 0;
    const char* pszWords = nullptr; ///< of eWord, blanks between them
    bool bOptional = false;
};

/// An option of a command. Without a value it is a flag: then the name of sValue is null.
struct SCommandOption {
    const char* pszName;
    SArgument sValue;
    const char* pszHelp;
};

const int ARGUMENTS_MAX = 3;
const int OPTIONS_MAX = 4;

struct SCommand {
    const char* pszWords;                          ///< "text set"
    const SArgument* apsArguments[ARGUMENTS_MAX];  ///< null from the first that isn't there
    const SCommandOption* apsOptions[OPTIONS_MAX]; ///< likewise
    const char* pszCalls;                          ///< the methods that it may call, as object.method
    void (*pfnRun)(CCommandRun& rcRun);
    const char* pszHelp; ///< a line
};

/// An array that can be looped over.
template <typename TRow>
struct SRows {
    const TRow* psFirst;
    const TRow* psEnd;

    const TRow* begin() const { return psFirst; }
    const TRow* end() const { return psEnd; }
};

/// The commands, in the order in which the help shows them.
SRows<SCommand> commandTable();

/// The options that stand before every command. --help is one of them.
SRows<SCommandOption> globalOptions();

/// The command that the words begin with, the longest that fits; null if none does. riWords is then the number of
/// words that its name takes.
const SCommand* findCommand(const QStringList& rcWords, int& riWords);

/// Its arguments and options, as far as they are there.
QList<const SArgument*> argumentsOf(const SCommand& rsCommand);
QList<const SCommandOption*> optionsOf(const SCommand& rsCommand);

/// "text set HANDLE|--id N STRING": words, arguments and options as the help shows them.
QString synopsisOf(const SCommand& rsCommand);

/// Whether one of its arguments is a handle, which --id N may replace.
bool takesHandle(const SCommand& rsCommand);

#endif
