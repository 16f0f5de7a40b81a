// What the cells of the module's tables hold besides the usual roles.
#pragma once

#include "hxcm.h"

#include <QIcon>
#include <QMetaType>

/// Payload of a colour cell: the swatch.
struct LayerListColorItemData {
    HxCmColor color;
};
Q_DECLARE_METATYPE(LayerListColorItemData)

/// Payload of a lineweight cell: the line sample.
struct LayerListLineweightItemData {
    int lineweight = 0;
};
Q_DECLARE_METATYPE(LayerListLineweightItemData)

/// Payload of a cell with a mark before its text; a null mark keeps its room free.
struct KvMarkItemData {
    QIcon mark;
};
Q_DECLARE_METATYPE(KvMarkItemData)

enum KvCellRole : int {
    kRolePayload = Qt::UserRole,  ///< one of the payloads
    kRoleOverridden,              ///< bool: highlighted
    kRoleGreyed,                  ///< bool: shown disabled; its row can be selected by it all the same
    kRoleOfModel,                 ///< a model's own roles begin here
};
