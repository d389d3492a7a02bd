#include "media/media_error.h"

extern "C" {
#include <libavutil/error.h>
#include <libavutil/log.h>
}

namespace krv::host {

int CheckAv(int code, const std::string& subject) {
  if (code >= 0) return code;
  char reason[AV_ERROR_MAX_STRING_SIZE] = {};
  av_strerror(code, reason, sizeof reason);
  throw MediaError(subject + ": " + reason);
}

void SilenceAvLog() { av_log_set_level(AV_LOG_QUIET); }

}  // namespace krv::host
