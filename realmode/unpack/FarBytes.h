#pragma once
// FarBytes: a piece of memory of up to 64 KB that near pointers do not reach. On DOS it is a segment; in the
// tests, which run on a machine without segments, it is ordinary memory. Both have the same functions.

#ifdef UNPACK_FOR_DOS
#include "realmode/unpack/dos/FarBytesDos.h"
#else
#include "realmode/unpack/host/FarBytesHost.h"
#endif
