// Colours in the group-code lists of layers and entities: 62 index, 420 true colour, 430 book colour.
#include "entity_colour.h"

#include "hxed.h"
#include "result_buffers.h"

#include <cstdlib>

namespace {

constexpr int kIndexCode = 62;
constexpr int kTrueColourCode = 420;
constexpr int kBookCode = 430;
constexpr std::size_t kMaxBookKeyLength = 301;
constexpr std::uint32_t kPackedMask = 0xFFFFFFU;
constexpr std::uint32_t kTrueColourMark = 0x02000000U;

resbuf* findGroup(resbuf* list, int code) {
    resbuf* found = nullptr;
    kv_Associate(list, code, &found);
    return found;
}

/// The node of a code, made directly after `after` when the list has none; null when memory runs out.
resbuf* findOrInsert(resbuf* list, int code, resbuf* after) {
    if (resbuf* const found = findGroup(list, code)) return found;
    resbuf* const node = hxutNewRb(code);
    if (!node) return nullptr;
    node->rbnext = after->rbnext;
    after->rbnext = node;
    return node;
}

/// Takes the first node of a code out of the list and releases it.
void removeGroup(resbuf* list, int code) {
    resbuf* before = list;
    while (before->rbnext && before->rbnext->restype != code) {
        before = before->rbnext;
    }
    resbuf* const node = before->rbnext;
    if (!node) return;
    before->rbnext = node->rbnext;
    node->rbnext = nullptr;
    hxutRelRb(node);
}

bool setBookKey(resbuf* node, const HxCmColor& colour) {
    const CStdStr<wchar_t> key = colour.getDictionaryKey().substr(0, kMaxBookKeyLength);
    wchar_t* const copy = hxutNewString(key.c_str());
    if (!copy) return false;
    hxutFreeString(node->resval.rstring);
    node->resval.rstring = copy;
    return true;
}

}  // namespace

std::uint32_t SDS_GetRgbFromKvcolor(const HxCmColor* colour) {
    if (colour->isByColor()) return kTrueColourMark + (colour->color() & kPackedMask);
    return hxedGetRGB(colour->colorIndex());
}

int SDS_getKvColorFromResbufList(resbuf* list, HxCmColor* colour) {
    const resbuf* const index = findGroup(list, kIndexCode);
    if (!index) return RTERROR;
    colour->setColorIndex(static_cast<std::int16_t>(std::abs(static_cast<int>(index->resval.rint))));
    const resbuf* const trueColour = findGroup(list, kTrueColourCode);
    if (trueColour) {
        const auto packed = static_cast<std::uint32_t>(trueColour->resval.rlong) & kPackedMask;
        colour->setColor((static_cast<std::uint32_t>(HxCmColor::kTrueColor) << 24U) | packed);
        const resbuf* const book = findGroup(list, kBookCode);
        if (book && book->resval.rstring) colour->setNamesFromDictionaryKey(book->resval.rstring);
    }
    colour->setColorMethod(trueColour ? HxCmColor::kTrueColor : HxCmColor::kByColorIndex);
    return RTNORM;
}

int SDS_UpdateKvColorToResbufList(resbuf* list, const HxCmColor* colour) {
    resbuf* const index = findGroup(list, kIndexCode);
    if (!index) return RTERROR;
    resbuf* last = index;
    if (colour->isByColor()) {
        last = findOrInsert(list, kTrueColourCode, index);
        if (!last) return RTERROR;
        last->resval.rlong = static_cast<std::int32_t>(colour->color() & kPackedMask);
    } else {
        removeGroup(list, kTrueColourCode);
    }
    if (colour->hasBookName()) {
        resbuf* const book = findOrInsert(list, kBookCode, last);
        if (!book || !setBookKey(book, *colour)) return RTERROR;
    } else {
        removeGroup(list, kBookCode);
    }
    const std::int16_t value = colour->colorIndex();
    index->resval.rint = static_cast<short>(index->resval.rint < 0 ? -value : value);
    return RTNORM;
}
