#pragma once

/// The texts of the GPIB search and of the port configuration.
namespace corvane::setupTexts {

inline constexpr auto searching = u"Searching...";
inline constexpr auto status = u"Status: ";
inline constexpr auto foundAt = u"Found device at: ";
inline constexpr auto cancelled = u"User canceled search.";
inline constexpr auto nothingFound = u"No Device Found";
inline constexpr auto notStarted = u"Search not started.";

/// The settings that each line is about follow.
inline constexpr auto portUses = u"In use until Disconnect: ";
inline constexpr auto portUsesApplied = u"Applied and in use: ";
inline constexpr auto appliedForConnect = u"Applied, in effect from the next Connect: ";
inline constexpr auto enteredOnly = u"Entered, not applied: ";

} // namespace corvane::setupTexts
