// Compressed drawings are read through a program of another maker that turns them into group codes.
#pragma once

#include "sdk/hxtypes.h"

#include <chrono>
#include <string>
#include <string_view>

namespace korvex {

/// A drawing that holds no group codes but a compressed image of the database ("AC10..").
bool isCompressedDrawing(std::string_view bytes);

/// The command of the converter: the environment variable KORVEX_DWG_CONVERTER, else the current profile's
/// setting "Drawings\DwgConverter", else "dwg2dxf". "{in}" and "{out}" stand for the files; a command without
/// them gets "-o {out} {in}" at its end. Arguments with blanks stand in quotation marks.
std::wstring converterCommand();

/// Runs the converter on the file and gives the drawing that it wrote. eFilerError when there is no such
/// program, when it fails or dies, takes longer than the limit, or writes nothing; `error` names the remedy.
/// eCancelled by the user.
Hx::ErrorStatus convertDrawing(const std::wstring& path, std::string& bytes, std::wstring& error,
                               std::chrono::milliseconds limit = std::chrono::minutes(2));

}  // namespace korvex
