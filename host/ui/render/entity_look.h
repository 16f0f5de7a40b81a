// What decides how an entity looks besides its shape: as the entity itself tells it, by layer and by block
// included.
#pragma once

#include "sdk/hxcm.h"
#include "sdk/hxdbid.h"

#include <cstdint>
#include <functional>

namespace korvex {

/// Many entities of a block share one.
struct EntityLook {
    HxDbStub* layer = nullptr;
    HxDbStub* linetype = nullptr;  ///< null: by layer
    bool isLinetypeByBlock = false;
    std::uint32_t color = 0xC0000000U;  ///< colour word, see HxCmColor
    std::int16_t lineweight = -1;       ///< hundredths of a millimetre, or HxDb::LineWeight
    HxCmTransparency::Method alphaMethod = HxCmTransparency::kByLayer;
    std::uint8_t alpha = 255;
    float linetypeScale = 1;

    bool operator==(const EntityLook& o) const {
        return layer == o.layer && linetype == o.linetype && isLinetypeByBlock == o.isLinetypeByBlock &&
               color == o.color && lineweight == o.lineweight && alphaMethod == o.alphaMethod &&
               alpha == o.alpha && linetypeScale == o.linetypeScale;
    }
};

struct EntityLookHash {
    std::size_t operator()(const EntityLook& look) const;
};

/// Reads the groups that all entities have.
EntityLook entityLook(HxDbStub& entity);

}  // namespace korvex
