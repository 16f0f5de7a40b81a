// The registry of widget classes.
#include "host/ui/dialogs/widget_classes.h"

#include "host/base/library.h"
#include "host/ui/dialogs/code_in_use.h"
#include "sdk/hxdialog.h"

#include <map>

namespace korvex {

namespace {

struct WidgetClass {
    HxWidgetFactory factory = nullptr;
    const link_map* library = nullptr;
};

std::map<QString, WidgetClass>& classes() {
    static auto& all = *new std::map<QString, WidgetClass>;
    return all;
}

}  // namespace

QWidget* makeRegisteredWidget(const QString& className, QWidget* parent) {
    const auto found = classes().find(className);
    return found == classes().end() ? nullptr : found->second.factory(parent);
}

void forgetWidgetClassesOf(const link_map* library) {
    for (auto one = classes().begin(); one != classes().end();) {
        one = one->second.library == library ? classes().erase(one) : std::next(one);
    }
}

}  // namespace korvex

bool hxuiRegisterWidget(const char* className, HxWidgetFactory factory) {
    using namespace korvex;
    const QString name = QString::fromUtf8(className).trimmed();
    if (name.isEmpty() || !factory) {
        return !name.isEmpty() && classes().erase(name) > 0;
    }
    const WidgetClass added = {factory, libraryAt(reinterpret_cast<const void*>(factory))};
    const auto found = classes().find(name);
    if (found != classes().end() && found->second.library != added.library) {
        return false;
    }
    watchCode();
    classes()[name] = added;
    return true;
}
