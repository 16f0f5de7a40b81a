// Which values an object of a drawing may be given.
#pragma once

#include "sdk/hxads.h"

#include <string>
#include <string_view>

class HxDbDatabase;

namespace korvex {

class ValueChecks {
public:
    /// `type` is the record type; it must outlive the checks.
    ValueChecks(const HxDbDatabase& database, std::string_view type, bool isEntity)
        : m_database(database), m_type(type), m_isEntity(isEntity) {}

    std::string_view type() const { return m_type; }
    bool isEntity() const { return m_isEntity; }
    /// It carries colour, linetype and lineweight.
    bool hasAppearance() const { return m_isEntity || m_type == "LAYER"; }

    /// Finite numbers, colours and lineweights that exist, names that the drawing has, codes that its version
    /// knows. Whether a group can hold the value at all is not looked at.
    bool accepts(const resbuf& node) const;

private:
    bool acceptsAppearance(const resbuf& node) const;
    bool acceptsName(const resbuf& node) const;

    const HxDbDatabase& m_database;
    std::string_view m_type;
    bool m_isEntity;
};

/// Points of this code have no z in records of this type.
bool isFlatPoint(std::string_view type, int code);

}  // namespace korvex
