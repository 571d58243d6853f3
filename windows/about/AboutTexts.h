#pragma once

/// The fixed texts of the About window.
namespace corvane::aboutTexts {

inline constexpr auto caption = u"About ";
inline constexpr auto partNumber = u"Part Number: ";
inline constexpr auto description =
    u"This application provides a simple, all-in-one test of the communications capabilities of "
    u"Brennick products.";
inline constexpr auto noSystemInfo = u"System Information Is Unavailable At This Time";

} // namespace corvane::aboutTexts
