// The host's icons.
#pragma once

#include <QIcon>
#include <QString>

namespace korvex {

/// A line icon of host/ui/theme/icons by its file's name without ending ("zoom-in"), drawn in the colours of
/// the theme at whatever size is asked for; it follows when the theme changes. Null for an unknown name.
QIcon themeIcon(const QString& name);

}  // namespace korvex
