// What the OpenGL driver says about the calls that it gets.
#pragma once

namespace krv::host {

// Whether the environment variable KRV_GL_MESSAGES asks for the driver's messages: "print" writes
// them to standard error; "fatal" writes and ends the process at the first fault, which is an
// error, undefined behaviour or a message of high severity, the shader compiler's own apart. Such
// contexts are debug contexts. Any thread.
bool WantsGlMessages();

// Does that for the current context. Does nothing when no messages are wanted or the driver cannot
// give them.
void WatchGlMessages();

}  // namespace krv::host
