#include "platform/standard_streams.h"

namespace krv::host::platform {

void PrepareStandardStreams() {}  // nothing is changed on the way, and terminals expect UTF-8

}  // namespace krv::host::platform
