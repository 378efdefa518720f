#pragma once

#include <jni.h>

/// Starts the process's Java virtual machine and returns the environment of the calling thread. It interprets only and
/// handles no signal that it can do without, so that sanitizers see what there is to see. Ends the process where no
/// machine can be had.
JNIEnv* startJavaVm();
