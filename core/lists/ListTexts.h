// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/Literals.h"

#include <QString>

/// Every fixed text of the command lists, to be checked by eye. Doubled blanks and misspellings are
/// as they must be.
namespace corvane::listTexts {

inline const QString caption = u"Corvane"_s;
inline const QString captionPrefix = u"Corvane - "_s;

inline const QString openFailed = u"Error occurred while trying to open file."_s;
inline const QString badLine =
    u"Error occurred while trying to open file.  Please check string format "
    "on each line: command space value.  Comments are proceeded by //"_s;
inline const QString openProcedure = u"\r\nFunction cmdLoad_Click"_s;
inline const QString saveFailed = u"Error occurred while trying to save file."_s;

// Why a list file could not be read or written whole, and what was left out.
inline const QString tooFewWords = u"too few words"_s;
inline const QString tooManyConstants = u"there is room for %1 constants"_s;
inline const QString lineTooLong = u"longer than %1 characters"_s;
inline const QString lineFault = u"line %1: %2"_s;
/// Of a line, the character, and its code in hexadecimal.
inline const QString noCharacterOfLists = u"line %1: \"%2\" (U+%3) does not fit into 8-bit text"_s;
inline const QString oneLine = u"1 line %1: line %2"_s;
inline const QString severalLines = u"%1 lines %2, the first is line %3"_s;
inline const QString ignored = u"ignored"_s;
inline const QString shortened = u"of which words are left out"_s;
inline const QString rowsNotSaved =
    u"Row %1 has no command: it and the rows below it were not saved"_s;
inline const QString restNotRead =
    u"The lines of %1 from line %2 on have not been read.  Saving over that "
    "file would lose them."_s;
inline const QString saveAllTheSame = u"\r\nSave all the same?"_s;
inline const QString discardChanges = u"The text has been changed.  Close without saving it?"_s;

/// Without the blank before the parenthesis that the filters of listKinds have.
inline const QString saveFilter = u"KMX Chamber Settings(*.kms)|*.kms"_s;

inline const QString emptyAtGet =
    u"The command list is empty.  You must first load a command list file "
    "before you can retrieve the data."_s;
inline const QString emptyAtSend =
    u"The command list is empty.  You must first load a command list file "
    "before you can transfer the data."_s;
inline const QString incompleteAtSend =
    u"The command list is incomplete.  You must first load a valid command "
    "list file before you can transfer the data."_s;
inline const QString transferComplete = u"Transfer complete."_s;
inline const QString testPassed = u"Test Passed."_s;
inline const QString testFailed = u"Test Failed."_s;
/// Beside the row's number while the run's Channel is closed, and when it is open again.
inline const QString closedProgress = u"closed"_s;
inline const QString reopenedProgress = u"Send or Stop"_s;
/// "%1" is the Channel, "%2" the row as in "row 20 of 200".
inline const QString closedAtRow =
    u"List run on %1: the Channel is closed, %2 has no whole reply."_s;
inline const QString closedBetweenRows =
    u"List run on %1: the Channel is closed, %2 is not sent yet."_s;
/// What the user can do then.
inline const QString connectAndSend = u" Connect and press Send to send the row, or press Stop."_s;
inline const QString connectBefore = u" Connect before it is sent, or press Stop."_s;
inline const QString reopenedAtRow =
    u"List run on %1: connected again, but %2 has no whole reply. Press Send "
    "to send the row, or Stop."_s;
inline const QString owed =
    u"List run on %1: the reply to %2 of the run before had not come; should "
    "it still come, it stands in a row of this run."_s;
inline const QString owedByHand =
    u"List run on %1: the reply to \"%2\", sent before the run, had not come; "
    "should it still come, it stands in a row of this run."_s;
/// "%2" is the command, "%3" the row.
inline const QString sentByHand =
    u"List run on %1: \"%2\" was sent by hand; its reply stands in %3."_s;
inline const QString replyTooLong =
    u"List run on %1: the list holds the first %3 characters of the reply to "
    "%2, no more."_s;
inline const QString syntaxErrorBox = u"Syntax Error.  Canceling Transfer."_s;
inline const QString syntaxError = u"Syntax Error"_s;
inline const QString passed = u"PASSED"_s;
inline const QString failed = u"FAILED"_s;

} // namespace corvane::listTexts
