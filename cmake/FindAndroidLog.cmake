# Finds the Android log library and defines AndroidLog::AndroidLog.
#
# On Android it is part of the platform. On Debian it comes with the package android-liblog-dev, in folders named
# "android" below the system's include and library folders.

find_path(AndroidLog_INCLUDE_DIR android/log.h PATH_SUFFIXES android)
find_library(AndroidLog_LIBRARY log PATH_SUFFIXES android)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(AndroidLog
  REQUIRED_VARS AndroidLog_LIBRARY AndroidLog_INCLUDE_DIR
  REASON_FAILURE_MESSAGE "the Android log library is missing. On Debian: apt-get install android-liblog-dev")
mark_as_advanced(AndroidLog_INCLUDE_DIR AndroidLog_LIBRARY)

if(AndroidLog_FOUND AND NOT TARGET AndroidLog::AndroidLog)
  add_library(AndroidLog::AndroidLog UNKNOWN IMPORTED)
  set_target_properties(AndroidLog::AndroidLog PROPERTIES
    IMPORTED_LOCATION ${AndroidLog_LIBRARY}
    INTERFACE_INCLUDE_DIRECTORIES ${AndroidLog_INCLUDE_DIR})
endif()
