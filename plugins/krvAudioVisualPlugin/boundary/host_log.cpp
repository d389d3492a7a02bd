#include "boundary/host_log.h"

#include <cstdio>

namespace krv {

TaggedLogFormat TagLogFormat(const char* format) {
  TaggedLogFormat tagged;
  std::snprintf(tagged.data(), tagged.size(), "<%s> %s", kPluginName, format);
  return tagged;
}

}  // namespace krv
