#pragma once

/// What window managers, the desktop's files and the widget's own files know the program by.
inline constexpr const char* applicationId = "org.tarnwick.mixer";

/// What people know it by.
inline constexpr const char* applicationName = "Tarnwick";
