# Finds jni.h and the header of the machine's types that it includes, and sets JniHeaders_INCLUDE_DIRS.
#
# They lie in a JDK: the one that JAVA_HOME names, or one where Linux distributions put them. No more of it is needed.

file(GLOB jdks /usr/lib/jvm/*)
find_path(JniHeaders_INCLUDE_DIR jni.h HINTS ${JAVA_HOME} ENV JAVA_HOME PATHS ${jdks} PATH_SUFFIXES include)
find_path(JniHeaders_MACHINE_INCLUDE_DIR jni_md.h HINTS ${JniHeaders_INCLUDE_DIR} PATH_SUFFIXES linux)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(JniHeaders
  REQUIRED_VARS JniHeaders_INCLUDE_DIR JniHeaders_MACHINE_INCLUDE_DIR
  REASON_FAILURE_MESSAGE "jni.h is missing. On Debian: apt-get install openjdk-17-jdk-headless")
mark_as_advanced(JniHeaders_INCLUDE_DIR JniHeaders_MACHINE_INCLUDE_DIR)

set(JniHeaders_INCLUDE_DIRS ${JniHeaders_INCLUDE_DIR} ${JniHeaders_MACHINE_INCLUDE_DIR})
