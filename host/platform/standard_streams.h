// The program's standard streams.
#pragma once

namespace krv::host::platform {

// Makes standard output and error carry the bytes that are written, on every platform the same: no
// line end is changed, and a terminal takes them for UTF-8. Both streams may be buffered: flush
// what must be seen at once. Call it once, first thing in main.
void PrepareStandardStreams();

// Keeps standard output for the caller alone: returns a descriptor of the C library that leads
// where it led, and sends to standard error what anyone writes to standard output from now on. The
// descriptor stays open until the process ends. -1 when the system refuses.
int TakeStandardOutput();

}  // namespace krv::host::platform
