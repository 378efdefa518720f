# Finds the JDK (javac, jar, javadoc) and its JNI headers, which on Android come with the NDK instead. FindJNI knows only
# some of the folders that a JDK may be in, so it is told the one that javac comes from.
if(NOT ANDROID)
  find_package(Java 11 COMPONENTS Development)
  if(Java_FOUND AND NOT JAVA_HOME AND NOT DEFINED ENV{JAVA_HOME})
    file(REAL_PATH ${Java_JAVAC_EXECUTABLE} JAVA_HOME)
    cmake_path(GET JAVA_HOME PARENT_PATH JAVA_HOME)
    cmake_path(GET JAVA_HOME PARENT_PATH JAVA_HOME)
  endif()
  find_package(JNI REQUIRED COMPONENTS JVM)
endif()
set(CMAKE_JAVA_COMPILE_FLAGS --release 11 -Xlint:all -Werror)
