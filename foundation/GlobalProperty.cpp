#include "foundation/GlobalProperty.h"

bool GlobalProperty::DEBUG_LOG = false;
char GlobalProperty::ROOT_DIR[1024] = {};
bool GlobalProperty::BINARY_SHADER = false;
