// Texts with numbered places.
#include "frame/util/format_message.h"

#include "frame/util/resource_text.h"

namespace {

constexpr int kMostNamed = 5;
constexpr int kLongestName = 60;
constexpr QChar kEllipsis(0x2026);

}  // namespace

QString formatMessage(const QString& text, const QStringList& arguments) {
    QString out;
    for (int at = 0; at < text.size(); ++at) {
        const QChar next = at + 1 < text.size() ? text[at + 1] : QChar();
        const int number = next.digitValue();
        if (text[at] != '%' || (next != '%' && (number < 1 || number > arguments.size()))) {
            out += text[at];
            continue;
        }
        ++at;
        out += next == '%' ? QString('%') : arguments[number - 1];
        if (next != '%' && at + 1 < text.size() && text[at + 1] == '!') {
            const int end = text.indexOf('!', at + 2);
            if (end > 0) at = end;
        }
    }
    return out;
}

QString listedNames(const QStringList& names) {
    QStringList shown;
    for (const QString& name : names.mid(0, kMostNamed)) {
        shown << '"' + (name.size() > kLongestName ? name.left(kLongestName) + kEllipsis : name) + '"';
    }
    const QString list = shown.join(", ");
    if (names.size() <= kMostNamed) return list;
    return formatMessage(resourceText(kStrAndMore), {list, QString::number(names.size() - kMostNamed)});
}
