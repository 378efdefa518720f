#include "foundation/GlobalProperty.h"

bool GlobalProperty::DEBUG_LOG = false;   // kept: debug-log
char GlobalProperty::ROOT_DIR[1024] = {}; // kept: root-dir
bool GlobalProperty::BINARY_SHADER = false;
