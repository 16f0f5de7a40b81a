// Texts with numbered places.
#include "format_message.h"

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
