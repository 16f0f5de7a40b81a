// The actions of the layer grid's context menu by their numbers, which are their object names.
#pragma once

enum KvGridMenuAction : int {
    kMenuSetCurrent = 1,
    kMenuNew = 2,
    kMenuSelectAll = 3,
    kMenuClearSelection = 4,
    kMenuSelectAllButCurrent = 5,
    kMenuInvertSelection = 6,
    kMenuInvertFilter = 7,
    kMenuSaveState = 8,
    kMenuStatesManager = 9,
    kMenuRemoveFromGroup = 10,
    kMenuDelete = 11,
    kMenuNewGroup = 12,
    kMenuMerge = 13,
    kMenuIsolate = 14,
    kMenuEndIsolation = 15,
    kMenuFreezeInAll = 20,
    kMenuFreezeInOthers = 21,
    kMenuFirstFilter = 30,         ///< one for each filter, but 41 to 44
    kMenuRemoveOverrides = 41,     ///< in the active viewport; 43 too
    kMenuRemoveAllOverrides = 42,  ///< in all viewports; 44 too
    kMenuPastOverrides = 45,
    kMenuFirstGroup = 531,  ///< one for each group filter
};
