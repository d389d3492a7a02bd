
// Asked for in the later versions of OpenGL ES too; the first version asks below.
#if defined(GL_ES) && __VERSION__ != 100
#extension GL_EXT_gpu_shader4 : enable
#endif
