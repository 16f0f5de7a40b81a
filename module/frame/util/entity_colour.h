// Colours in the group-code lists of layers and entities: 62 index, 420 true colour, 430 book colour.
#pragma once

#include "hxads.h"
#include "hxcm.h"

/// A colour as one number: 0x02000000 plus the packed word for a true colour, else the host's RGB value of
/// its index.
std::uint32_t SDS_GetRgbFromKvcolor(const HxCmColor* colour);

/// Takes the colour of a list; the sign of the index, which says off, is dropped. RTERROR, with the colour
/// unchanged, for a list without 62; else RTNORM.
int SDS_getKvColorFromResbufList(resbuf* list, HxCmColor* colour);

/// Puts a colour into a list: changes, adds and removes 62, 420 and 430; a negative index stays negative.
/// RTERROR, with the list unchanged, for a list without 62; RTERROR too when memory runs out; else RTNORM.
/// REQUIRES: the list's first node is no 420 or 430.
int SDS_UpdateKvColorToResbufList(resbuf* list, const HxCmColor* colour);
