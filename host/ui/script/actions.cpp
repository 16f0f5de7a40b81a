// The table of actions, and the small ones.
#include "host/ui/script/actions.h"

#include "host/base/text.h"
#include "host/editor/editor.h"
#include "host/ui/script/action_parts.h"
#include "host/ui/script/widget_names.h"
#include "sdk/hxdialog.h"
#include "sdk/hxui.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QFileInfo>
#include <QMenu>
#include <QPixmap>
#include <QScrollArea>
#include <QThread>
#include <QWidget>

namespace korvex {

namespace {

constexpr int kLongestDelay = 60000;
constexpr long long kPatienceStep = 5;

struct ActionRow {
    const wchar_t* name;
    QString (*perform)(Words words);
    const wchar_t* prompt;
};
constexpr ActionRow kActions[] = {
    {L"PICTURE", pictureAction, L"Enter picture file and control:"},
    {L"CLICK", clickAction, L"Enter control to click and place:"},
    {L"TYPE", typeAction, L"Enter control and text:"},
    {L"PRESS", pressAction, L"Enter control and keys:"},
    {L"CHOOSE", chooseAction, L"Enter control and item:"},
    {L"TICK", tickAction, L"Enter control and 0 or 1:"},
    {L"LOOK", lookAction, L"Enter control <all>:"},
    {L"DELAY", delayAction, L"Enter milliseconds:"},
    {L"END", endAction, L"Enter result <cancel>:"},
};

}  // namespace

ActionResult performAction(const std::wstring& line) {
    Words words(toQString(line));
    const Word name = words.next();
    for (const ActionRow& row : kActions) {
        if (!name.isQuoted && name.text.compare(toQString(row.name), Qt::CaseInsensitive) == 0) {
            return {true, toWide(row.perform(words))};
        }
    }
    return {};
}

std::wstring actionNames() {
    std::wstring names;
    for (const ActionRow& row : kActions) {
        const bool isLast = &row == std::end(kActions) - 1;
        names += (names.empty() ? L"" : isLast ? L" or " : L", ") + std::wstring(row.name);
    }
    return names;
}

const std::array<ActionCommand, kActionCount>& actionCommands() {
    static_assert(std::size(kActions) == kActionCount);
    static const auto commands = [] {
        std::array<ActionCommand, kActionCount> all{};
        std::transform(std::begin(kActions), std::end(kActions), all.begin(), [](const ActionRow& row) {
            return ActionCommand{row.name, row.prompt};
        });
        return all;
    }();
    return commands;
}

void tell(const QString& text) { editor().console().message(toWide(text)); }

void letTimePass(int most, const std::function<bool()>& until) {
    const QDeadlineTimer end(most);
    // No loop of its own: in that the next line would have its turn.
    while (!until() && !end.hasExpired()) {
        QCoreApplication::processEvents();
        QThread::msleep(static_cast<unsigned long>(std::clamp(end.remainingTime(), 0LL, kPatienceStep)));
    }
}

bool isUsable(QWidget& widget, QString& trouble) {
    if (!widget.isVisible()) {
        trouble = QString("%1 is not shown.").arg(controlLabel(widget));
    } else if (!widget.isEnabled()) {
        trouble = QString("%1 is disabled.").arg(controlLabel(widget));
    }
    for (QWidget* parent = widget.parentWidget(); parent && !widget.isWindow();
         parent = parent->parentWidget()) {
        if (auto* const area = qobject_cast<QScrollArea*>(parent)) {
            area->ensureWidgetVisible(&widget);
        }
    }
    return trouble.isEmpty();
}

QWidget* usableControl(Words& words, QString& trouble) {
    const QString name = words.next().text;
    if (name.isEmpty()) {
        trouble = "The name of a control is missing. LOOK alone lists the names.";
        return nullptr;
    }
    const NamedObject found = findNamed(name);
    trouble = found.trouble;
    if (found.action) {
        trouble = QString("\"%1\" is a command of a menu or tool bar: use CLICK.").arg(name);
    }
    return found.widget && isUsable(*found.widget, trouble) ? found.widget : nullptr;
}

QString pictureAction(Words words) {
    const QString file = words.next().text;
    if (file.isEmpty()) {
        return "The name of the picture file is missing.";
    }
    const QString name = words.restAsWord();
    if (!topmostWindow() && hxuiMainWindow()) {
        hxuiMainWindow()->show();  // a run without a display shows it when it is to be seen
    }
    const NamedObject found = name.isEmpty() ? NamedObject{topmostWindow(), nullptr, {}} : findNamed(name);
    if (!found.widget) {
        return found.trouble.isEmpty() ? "No window is open that a picture could be taken of."
                                       : found.trouble;
    }
    const QPixmap picture = found.widget->grab();
    if (!picture.save(file, "PNG")) {
        return QString("The picture \"%1\" cannot be written. Is the folder there, and may you write to it?")
            .arg(QFileInfo(file).absoluteFilePath());
    }
    tell(QString("Picture \"%1\", %2 x %3.").arg(file).arg(picture.width()).arg(picture.height()));
    return {};
}

QString delayAction(Words words) {
    bool isNumber = false;
    const int delay = words.restAsWord().toInt(&isNumber);
    if (!isNumber || delay < 0 || delay > kLongestDelay) {
        return QString("\"%1\" is no time to wait: enter milliseconds, 0 to %2.")
            .arg(words.restAsWord())
            .arg(kLongestDelay);
    }
    letTimePass(delay, [] { return false; });
    return {};
}

QString endAction(Words words) {
    bool isNumber = true;
    const QString text = words.restAsWord();
    const int result = text.isEmpty() ? int(IDCANCEL) : text.toInt(&isNumber);
    if (!isNumber) {
        return QString("\"%1\" is no result: enter a whole number.").arg(text);
    }
    QWidget* const window = topmostWindow();
    if (auto* const dialog = qobject_cast<HxUiBaseDialog*>(window)) {
        dialog->EndDialog(result);
    } else if (auto* const other = qobject_cast<QDialog*>(window)) {
        other->done(result);
    } else if (auto* const menu = qobject_cast<QMenu*>(window)) {
        menu->close();
    } else {
        return "No dialog or menu is open that could be ended.";
    }
    return {};
}

}  // namespace korvex
