// The drawings that were opened or saved last.
#pragma once

#include <QStringList>

namespace korvex {

/// Kept in the profile, the latest first, ten at most.
namespace recent_files {

QStringList all();
void add(const QString& path);
void remove(const QString& path);
void clear();

}  // namespace recent_files

}  // namespace korvex
