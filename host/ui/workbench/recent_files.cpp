// Keeps the list as one setting, a path a line.
#include "host/ui/workbench/recent_files.h"

#include "host/ui/workbench/ui_settings.h"

namespace korvex {
namespace recent_files {

namespace {

constexpr int kMost = 10;
constexpr char kSetting[] = "RecentFiles";

void keep(const QStringList& paths) { keepUiSetting(kSetting, paths.join('\n')); }

}  // namespace

QStringList all() {
    const QString text = uiSetting(kSetting);
    return text.isEmpty() ? QStringList() : text.split('\n');
}

void add(const QString& path) {
    if (path.isEmpty() || path.contains('\n')) {
        return;
    }
    QStringList paths = all();
    if (!paths.isEmpty() && paths.first() == path) {
        return;
    }
    paths.removeAll(path);
    paths.prepend(path);
    keep(paths.mid(0, kMost));
}

void remove(const QString& path) {
    QStringList paths = all();
    if (paths.removeAll(path) > 0) {
        keep(paths);
    }
}

void clear() { keep({}); }

}  // namespace recent_files
}  // namespace korvex
