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
    return QStringLiteral("List run on %1: the Channel is closed, %2 has no whole reply. Connect "
                          "and press Send to send the row again, or press Stop.");
}
inline QString closedBetweenRows()
{
    return QStringLiteral("List run on %1: the Channel is closed. Connect before %2 is sent, or "
                          "press Stop.");
}
inline QString reopenedAtRow()
{
    return QStringLiteral("List run on %1: connected again, but the reply to %2 is lost. Press "
                          "Send to send the row again, or Stop.");
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
