#pragma once

/// The texts of the GPIB search and of the port configuration.
namespace corvane::setupTexts {

inline constexpr auto searching = u"Searching...";
inline constexpr auto status = u"Status: ";
inline constexpr auto foundAt = u"Found device at: ";
inline constexpr auto cancelled = u"User canceled search.";
inline constexpr auto nothingFound = u"No Device Found";
inline constexpr auto notStarted = u"Search not started.";

inline constexpr auto listRuns = u"A list transfer is running on IEEE 488.  "
                                 u"Please wait for its end or stop it and search again.";
inline constexpr auto channelLoops = u"IEEE 488 is repeating its command.  "
                                     u"Please uncheck Loop and search again.";
inline constexpr auto readPends = u"A reply is being awaited on IEEE 488.  "
                                  u"Please search again when it has arrived.";
inline constexpr auto boardExchanges = u"The VXM250E window is using IEEE 488.  "
                                       u"Please wait until it has finished and search again.";

/// The settings that each line is about follow.
inline constexpr auto portUses = u"In use until Disconnect: ";
inline constexpr auto portUsesApplied = u"Applied and in use: ";
inline constexpr auto appliedForConnect = u"Applied, in effect from the next Connect: ";
inline constexpr auto enteredOnly = u"Entered, not applied: ";

} // namespace corvane::setupTexts
