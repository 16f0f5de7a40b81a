// The drawing that NEW begins with, read from the program's resources like any other.
#include "host/io/default_drawing.h"

#include "host/base/log.h"
#include "host/io/drawing_reader.h"
#include "host/io/save_time.h"

#include <QFile>

// Resources of a library are registered by a function that must be called by name, outside of namespaces.
static void registerResources() { Q_INIT_RESOURCE(default_drawing); }

namespace korvex {

void buildDefaultDrawing(HxDbDatabase& database) {
    registerResources();
    QFile file(QStringLiteral(":/korvex/io/default_drawing.dxf"));
    std::wstring error = L"The program's own empty drawing is missing; install the program anew.";
    const bool isOpen = file.open(QIODevice::ReadOnly);
    if (!isOpen || readDrawing(database, file.readAll().toStdString(), error) != Hx::eOk) {
        log(Severity::Error, error);
        return;
    }
    for (const char* name : {"$TDCREATE", "$TDUPDATE"}) {
        setHeaderReal(database, name, julianNow(false));
    }
    for (const char* name : {"$TDUCREATE", "$TDUUPDATE"}) {
        setHeaderReal(database, name, julianNow(true));
    }
}

}  // namespace korvex
