// Finds the keywords in a prompt.
#include "host/ui/workbench/prompt_text.h"

#include "host/editor/keywords.h"

#include <QUrl>

namespace korvex {

namespace {

constexpr char kLink[] = "keyword:";

KeywordList keywordsOf(const InputRequest& request) {
    KeywordList list;
    list.assign(request.keywords);
    return list;
}

bool isOneOf(const KeywordList& keywords, const QString& word) {
    return keywords.match(word.toStdWString()).match == KeywordList::Match::one;
}

/// The text of an option list, without its brackets.
void addOptions(const QString& list, const KeywordList& keywords, std::vector<PromptPart>& parts) {
    const QStringList options = list.split('/');
    for (int i = 0; i < options.size(); ++i) {
        if (i > 0) {
            parts.push_back({"/", false});
        }
        parts.push_back({options[i], isOneOf(keywords, options[i])});
    }
}

}  // namespace

std::vector<PromptPart> promptParts(const InputRequest& request) {
    const QString text = QString::fromStdWString(request.prompt).simplified();
    const KeywordList keywords = keywordsOf(request);
    std::vector<PromptPart> parts;
    int at = 0;
    while (at < text.size()) {
        const int open = text.indexOf('[', at);
        const int close = open < 0 ? -1 : text.indexOf(']', open);
        if (close < 0) {
            break;
        }
        parts.push_back({text.mid(at, open + 1 - at), false});
        addOptions(text.mid(open + 1, close - open - 1), keywords, parts);
        at = close;
        if (text.indexOf('[', close) < 0) {
            break;
        }
    }
    if (at < text.size()) {
        parts.push_back({text.mid(at), false});
    }
    return parts;
}

QString promptHtml(const InputRequest& request) {
    QString html;
    for (const PromptPart& part : promptParts(request)) {
        const QString text = part.text.toHtmlEscaped();
        html += part.isKeyword
                    ? QString("<a href=\"%1%2\">%3</a>")
                          .arg(kLink, QString::fromLatin1(QUrl::toPercentEncoding(part.text)), text)
                    : text;
    }
    return html;
}

QString linkedKeyword(const QString& link) {
    return link.startsWith(kLink) ? QUrl::fromPercentEncoding(link.mid(sizeof kLink - 1).toLatin1())
                                  : QString();
}

QStringList promptKeywords(const InputRequest& request) {
    const QString text = QString::fromStdWString(keywordsOf(request).text());
    return text.isEmpty() ? QStringList() : text.split('/');
}

QString promptHint(const InputRequest& request) {
    using Wants = InputRequest::Wants;
    switch (request.wants) {
    case Wants::command: return "Type a command, or select objects";
    case Wants::keyword: return "Click an option, or type its capitals";
    case Wants::number: return "Type a number";
    case Wants::point: return "Click a point, or type x,y";
    case Wants::entity: return "Click an object";
    case Wants::text: return "Type the answer and press Enter";
    }
    return {};
}

}  // namespace korvex
