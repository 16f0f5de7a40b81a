// A database's own reading and saving.
#include "host/db/kernel/database_imp.h"
#include "host/io/drawing_reader.h"
#include "host/io/drawing_writer.h"

Hx::ErrorStatus HxDbDatabase::readDwgFile(const wchar_t* path) {
    Imp& db = *m_imp;
    if (!path || !*path) {
        db.error = L"There is no file name.";
        return Hx::eInvalidInput;
    }
    if (!db.stubs.empty()) {
        db.error = L"The database holds a drawing already.";
        return Hx::eInvalidContext;
    }
    const Hx::ErrorStatus status = korvex::readDrawingFile(*this, path, db.error);
    if (status == Hx::eOk) {
        db.path = path;
    }
    return status;
}

Hx::ErrorStatus HxDbDatabase::saveAs(const wchar_t* path) {
    Imp& db = *m_imp;
    if (!path || !*path) {
        db.error = L"There is no file name.";
        return Hx::eInvalidInput;
    }
    if (!db.table(korvex::TableKind::layer)) {
        db.error = L"The database holds no drawing.";
        return Hx::eInvalidContext;
    }
    const Hx::ErrorStatus status = korvex::saveDrawingFile(*this, path, db.error);
    if (status == Hx::eOk) {
        db.path = path;
        db.modified = false;
        db.journal.markSaved();
    }
    return status;
}
