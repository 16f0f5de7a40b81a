// Saving in tests: whatever a test saves, the program must be able to open again.
#pragma once

#include "host/base/text.h"
#include "host/io/drawing_reader.h"
#include "host/io/drawing_writer.h"

#include <gtest/gtest.h>
#include <string>

namespace korvex::test {

/// The drawing's file as of now.
inline std::string written(HxDbDatabase& database) {
    std::string bytes = writeDrawing(database);
    HxDbDatabase again(false);
    std::wstring error;
    EXPECT_EQ(readDrawing(again, bytes, error), Hx::eOk) << "what was saved: " << toUtf8(error);
    return bytes;
}

inline Hx::ErrorStatus saveAs(HxDbDatabase& database, const std::wstring& path) {
    const Hx::ErrorStatus status = database.saveAs(path.c_str());
    HxDbDatabase again(false);
    if (status == Hx::eOk) {
        EXPECT_EQ(again.readDwgFile(path.c_str()), Hx::eOk)
            << "what was saved: " << toUtf8(again.readError());
    }
    return status;
}

}  // namespace korvex::test
