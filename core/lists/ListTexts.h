#pragma once

#include <QString>

/// Every fixed text of the command lists, to be checked by eye. Doubled blanks and misspellings are
/// as they must be.
namespace corvane::listTexts {

inline QString caption()
{
    return QStringLiteral("Corvane");
}
inline QString captionPrefix()
{
    return QStringLiteral("Corvane - ");
}

inline QString openFailed()
{
    return QStringLiteral("Error occurred while trying to open file.");
}
inline QString badLine()
{
    return QStringLiteral("Error occurred while trying to open file.  Please check string format "
                          "on each line: command space value.  Comments are proceeded by //");
}
inline QString openProcedure()
{
    return QStringLiteral("\r\nFunction cmdLoad_Click");
}
inline QString saveFailed()
{
    return QStringLiteral("Error occurred while trying to save file.");
}

// Why a list file could not be read or written whole, and what was left out.
inline QString tooFewWords()
{
    return QStringLiteral("too few words");
}
inline QString tooManyConstants()
{
    return QStringLiteral("there is room for %1 constants");
}
inline QString lineTooLong()
{
    return QStringLiteral("longer than %1 characters");
}
inline QString lineFault()
{
    return QStringLiteral("line %1: %2");
}
/// Of a line, the character, and its code in hexadecimal.
inline QString noCharacterOfLists()
{
    return QStringLiteral("line %1: \"%2\" (U+%3) does not fit into 8-bit text");
}
inline QString noFileName()
{
    return QStringLiteral("no file can have this name");
}
inline QString oneLine()
{
    return QStringLiteral("1 line %1: line %2");
}
inline QString severalLines()
{
    return QStringLiteral("%1 lines %2, the first is line %3");
}
inline QString ignored()
{
    return QStringLiteral("ignored");
}
inline QString shortened()
{
    return QStringLiteral("of which words are left out");
}
inline QString rowsNotSaved()
{
    return QStringLiteral("Row %1 has no command: it and the rows below it were not saved");
}
inline QString restNotRead()
{
    return QStringLiteral("The lines of %1 from line %2 on have not been read.  Saving over that "
                          "file would lose them.");
}
inline QString saveAllTheSame()
{
    return QStringLiteral("\r\nSave all the same?");
}
inline QString discardChanges()
{
    return QStringLiteral("The text has been changed.  Close without saving it?");
}

inline QString openFilter()
{
    return QStringLiteral("KMX Chamber Settings (*.kms)|*.kms"
                          "|KMX Profile (*.kmp)|*.kmp"
                          "|Test List (*.tst)|*.tst");
}
/// Without the blank before the parenthesis that the other filters have.
inline QString saveFilter()
{
    return QStringLiteral("KMX Chamber Settings(*.kms)|*.kms");
}

inline QString emptyAtGet()
{
    return QStringLiteral("The command list is empty.  You must first load a command list file "
                          "before you can retrieve the data.");
}
inline QString emptyAtSend()
{
    return QStringLiteral("The command list is empty.  You must first load a command list file "
                          "before you can transfer the data.");
}
inline QString incompleteAtSend()
{
    return QStringLiteral("The command list is incomplete.  You must first load a valid command "
                          "list file before you can transfer the data.");
}
inline QString transferComplete()
{
    return QStringLiteral("Transfer complete.");
}
inline QString testPassed()
{
    return QStringLiteral("Test Passed.");
}
inline QString testFailed()
{
    return QStringLiteral("Test Failed.");
}
/// Beside the row's number while the run's Channel is closed, and when it is open again.
inline QString closedProgress()
{
    return QStringLiteral("closed");
}
inline QString reopenedProgress()
{
    return QStringLiteral("Send or Stop");
}
/// "%1" is the Channel, "%2" the row as in "row 20 of 200".
inline QString closedAtRow()
{
    return QStringLiteral("List run on %1: the Channel is closed, %2 has no whole reply.");
}
inline QString closedBetweenRows()
{
    return QStringLiteral("List run on %1: the Channel is closed, %2 is not sent yet.");
}
/// What the user can do then.
inline QString connectAndSend()
{
    return QStringLiteral(" Connect and press Send to send the row, or press Stop.");
}
inline QString connectBefore()
{
    return QStringLiteral(" Connect before it is sent, or press Stop.");
}
inline QString reopenedAtRow()
{
    return QStringLiteral("List run on %1: connected again, but %2 has no whole reply. Press Send "
                          "to send the row, or Stop.");
}
inline QString owed()
{
    return QStringLiteral("List run on %1: the reply to %2 of the run before had not come; should "
                          "it still come, it stands in a row of this run.");
}
/// "%2" is the command, "%3" the row.
inline QString sentByHand()
{
    return QStringLiteral("List run on %1: \"%2\" was sent by hand; its reply stands in %3.");
}
inline QString replyTooLong()
{
    return QStringLiteral("List run on %1: the list holds the first %3 characters of the reply to "
                          "%2, no more.");
}
inline QString syntaxErrorBox()
{
    return QStringLiteral("Syntax Error.  Canceling Transfer.");
}
inline QString syntaxError()
{
    return QStringLiteral("Syntax Error");
}
inline QString passed()
{
    return QStringLiteral("PASSED");
}
inline QString failed()
{
    return QStringLiteral("FAILED");
}

} // namespace corvane::listTexts
