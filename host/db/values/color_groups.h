// The groups that layers and entities keep their colour in: 62, 420 and 430.
#pragma once

#include "host/db/kernel/field_writer.h"
#include "sdk/hxcm.h"

namespace korvex {

class ColorGroups {
public:
    static constexpr int kIndexCode = 62;

    /// `standard` is the index of an object without these groups, and of one whose index is none.
    explicit ColorGroups(std::int16_t standard) : m_standard(standard) { clear(); }

    void clear();
    /// False for groups that are no colour's.
    bool read(const GroupCursor& group);
    /// The colour of what was read; negative indexes count as positive.
    HxCmColor color() const;
    bool isNegative() const { return m_index < 0; }

    /// The index to write for a colour: the one that was read, odd or negative as it may be, if the colour is
    /// the same still.
    long long indexOf(const HxCmColor& color) const;
    /// 420 and 430.
    static void writeTrueColor(FieldWriter& out, const HxCmColor& color);

private:
    std::int16_t m_standard;
    long long m_index = 0;
    long long m_trueColor = -1;
    std::wstring m_bookKey;
};

}  // namespace korvex
