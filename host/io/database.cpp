// The construction of a database, which may begin with a drawing.
#include "host/db/kernel/database_imp.h"
#include "host/io/default_drawing.h"

HxDbDatabase::HxDbDatabase(bool buildDefault) : m_imp(new Imp(*this)) {
    if (buildDefault) {
        korvex::buildDefaultDrawing(*this);
    }
}
