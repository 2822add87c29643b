#pragma once

/// What the form for bug reports says, UTF-8.
namespace glimmerly::bug_report_text {

inline constexpr auto heading = "Report a Bug";
inline constexpr auto purpose =
    "Tell us what went wrong. Your email is optional, but helps us follow up if we need more details.";
inline constexpr auto required = "Required";
inline constexpr auto title = "Title";
inline constexpr auto titlePlaceholder = "Short summary";
inline constexpr auto email = "Email";
inline constexpr auto emailPlaceholder = "name@example.com";
inline constexpr auto description = "Description";
inline constexpr auto descriptionPlaceholder = "What happened? What did you expect instead?";
inline constexpr auto cancel = "Cancel";
inline constexpr auto report = "Report";
inline constexpr auto reporting = "Sending the report"; ///< for those who cannot see it

} // namespace glimmerly::bug_report_text
