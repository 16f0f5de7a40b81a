// Which layer filter is selected, as a drawing records it for the next one who opens it.
#pragma once

#include "hxlyfilter.h"

/// Takes the mark (290) off the record of the filter that was selected before and puts it on that of the
/// selected one, and the selected one's name into the layer table's extended data "ACAD". `hasRecords` tells
/// whether the drawing has records of filters; without them nothing else is done. eRefused when a record is
/// not written, statuses of hxdbOpenObject and of making an extension dictionary.
Hx::ErrorStatus storeFilterSelection(HxDbDatabase& database, const HxLyLayerFilter& selected,
                                     const HxLyLayerFilter& before, bool& hasRecords);
