// The program's standard streams.
#pragma once

namespace krv::host::platform {

// Makes standard output and error carry the bytes that are written, on every platform the same: no
// line end is changed, and a terminal takes them for UTF-8. Both streams may be buffered: flush
// what must be seen at once. Call it once, first thing in main.
void PrepareStandardStreams();

}  // namespace krv::host::platform
