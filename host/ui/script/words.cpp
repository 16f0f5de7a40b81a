// Cuts lines into words.
#include "host/ui/script/words.h"

namespace korvex {

bool Word::is(const char* word) const {
    return !isQuoted && text.compare(QLatin1String(word), Qt::CaseInsensitive) == 0;
}

Word Words::next() {
    int at = 0;
    while (at < m_rest.size() && m_rest[at].isSpace()) {
        ++at;
    }
    Word word;
    word.isQuoted = at < m_rest.size() && m_rest[at] == '"';
    int end = at;
    if (word.isQuoted) {
        end = m_rest.indexOf('"', ++at);
        end = end < 0 ? m_rest.size() : end;
    } else {
        while (end < m_rest.size() && !m_rest[end].isSpace()) {
            ++end;
        }
    }
    word.text = m_rest.mid(at, end - at);
    end += word.isQuoted && end < m_rest.size() ? 1 : 0;
    m_rest = m_rest.mid(end + (end < m_rest.size() && m_rest[end].isSpace() ? 1 : 0));
    return word;
}

QString Words::restAsWord() const {
    const QString text = m_rest.trimmed();
    const bool isEnclosed =
        text.size() >= 2 && text.startsWith('"') && text.indexOf('"', 1) == text.size() - 1;
    return isEnclosed ? text.mid(1, text.size() - 2) : text;
}

}  // namespace korvex
