// OpenGL 1.1 and GLU, under the names that every system has for them.
#pragma once

#include <GL/gl.h>
#include <GL/glu.h>

// Of every driver in use, though a later version than this one named it.
#ifndef GL_BGRA
#define GL_BGRA 0x80E1
#endif
