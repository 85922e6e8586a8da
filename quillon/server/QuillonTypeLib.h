// The type library QuillonLib 2.0: the control's dispatch and event interfaces, its coclass and its
// enumerations.
#pragma once
#include "com/typeinfo.h"

inline constexpr IID DIID__DQuillon = {0x5C4B1F21, 0x3E2A, 0x4B7D, {0x9A, 0x61, 0x2F, 0x0C, 0x8D, 0x7E, 0x4A, 0x10}};
inline constexpr IID DIID__DQuillonEvents = {0x5C4B1F22, 0x3E2A, 0x4B7D, {0x9A, 0x61, 0x2F, 0x0C, 0x8D, 0x7E, 0x4A, 0x10}};

// The library's source, made once from the control's dispatch and event maps, so that what the
// library declares and what the control answers cannot disagree.
const TypeLibSource& QuillonTypeLibSource();
