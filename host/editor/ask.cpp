// Puts prompts and judges answers.
#include "host/editor/ask.h"

#include "host/editor/command_processor.h"
#include "host/editor/documents.h"
#include "host/editor/editor.h"
#include "host/editor/number_text.h"
#include "host/editor/picker.h"
#include "host/editor/view.h"
#include "sdk/hxdbentity.h"
#include "sdk/hxdoc.h"

#include <functional>

namespace korvex {

namespace {

/// What a kind of question is about.
struct Kind {
    using Wants = InputRequest::Wants;

    explicit Kind(Wants whatIsAsked) : wants(whatIsAsked) {}
    Wants wants;
    AnswerEnd end = AnswerEnd::blank;
    bool trims = true;
    bool takesTransparent = true;
    bool keepsEmptyText = false;                       ///< Enter is an empty text, not RTNONE
    const wchar_t* wanted = L"";                       ///< for the message after wrong input
    std::optional<HxGePoint3d> base;                   ///< InputRequest::base
    bool nested = false;                               ///< InputRequest::nested
    std::function<bool(const std::wstring&)> isNames;  ///< takes a line as a whole
};

/// Takes an answer if it is of the kind. A text in `why` says what is wrong with one that nearly is.
using Accept = std::function<bool(const Token&, Answer&, std::wstring& why)>;

std::wstring trimmed(const std::wstring& text) {
    const std::size_t first = text.find_first_not_of(L" \t");
    return first == std::wstring::npos ? L"" : text.substr(first, text.find_last_not_of(L" \t") - first + 1);
}

std::wstring listText(const std::vector<std::wstring>& words) {
    std::wstring out;
    for (std::size_t i = 0; i < words.size(); ++i) {
        out += (i == 0 ? L"" : i + 1 == words.size() ? L" or " : L", ") + words[i];
    }
    return out;
}

/// What the token points at; typed coordinates count from `base`.
bool pointOf(const Token& token, const HxGePoint3d& base, HxGePoint3d& point) {
    if (token.point) {
        point = *token.point;
        return true;
    }
    return readPoint(token.text, base, point);
}

/// One question, from its prompt to an answer that fits.
class Question {
public:
    Question(const Prompt& prompt, const Kind& kind, Accept accept)
        : m_prompt(prompt), m_kind(kind), m_accept(std::move(accept)) {
        m_keywords.assign(prompt.keywords ? prompt.keywords : L"");
    }

    Answer put() {
        Editor& host = editor();
        Answer answer;
        while (!isAnswered(host, answer)) {
        }
        host.cancelled = answer.result == RTCAN;
        return answer;
    }

private:
    bool isAnswered(Editor& host, Answer& answer) {
        answer = Answer();
        Token token;
        if (!isGiven(host, token) || token.cancels) {
            answer.result = RTCAN;
            return true;
        }
        if (token.interrupted) {
            return false;
        }
        answer.endsLine = token.endsLine;
        if (m_kind.trims) {
            token.text = trimmed(token.text);
        }
        if (token.text.empty() && !token.point && !m_kind.keepsEmptyText) {
            return isEnter(host, answer);
        }
        if (m_kind.isNames && takesLine(host, token, answer)) {
            return true;
        }
        if (m_kind.takesTransparent && host.processor().runTransparent(token.text, m_kind.end)) {
            return false;
        }
        return isKeyword(token, answer) || isValue(token, answer) || isOther(token, answer);
    }

    bool isGiven(Editor& host, Token& token) const {
        const CommandProcessor::Waiting waiting(host.processor());
        host.idle();
        if (m_kind.takesTransparent) {
            host.input().takeSent(true);
        }
        return host.input().next(request(), token);
    }

    /// False with the line's first word in the token; the rest comes next.
    bool takesLine(Editor& host, Token& token, Answer& answer) const {
        HxGePoint3d point;
        const bool isKeyword = m_keywords.match(token.text).match == KeywordList::Match::one;
        if (!isKeyword && !pointOf(token, host.lastPoint, point) && m_kind.isNames(token.text)) {
            answer.result = RTNORM;
            answer.text = token.text;
            return true;
        }
        const std::size_t blank = token.text.find_first_of(L" \t");
        if (blank != std::wstring::npos) {
            host.input().unread(token.text.substr(blank + 1) + L"\n");
            token.text.erase(blank);
        }
        return false;
    }

    InputRequest request() const {
        return {m_kind.end,  m_prompt.text, m_kind.wants, m_prompt.keywords ? m_prompt.keywords : L"",
                m_kind.base, m_kind.nested};
    }

    bool isEnter(Editor& host, Answer& answer) {
        answer.result = RTNONE;
        if (m_prompt.bits & RSG_NONULL) {
            host.failure(L"An answer is required: " + wanted() + L".");
            return false;
        }
        return true;
    }

    bool isKeyword(const Token& token, Answer& answer) {
        const KeywordList::Result found = m_keywords.match(token.text);
        if (found.match == KeywordList::Match::ambiguous) {
            m_why = L"\"" + token.text + L"\" may mean " + listText(found.candidates) + L".";
            return false;
        }
        if (found.match == KeywordList::Match::none) {
            return false;
        }
        answer.result = RTKWORD;
        answer.text = found.keyword;
        answer.isKeyword = true;
        return true;
    }

    bool isValue(const Token& token, Answer& answer) {
        if (!m_why.empty() || !m_accept(token, answer, m_why)) {
            return false;
        }
        if (answer.result == RTERROR) {
            answer.result = RTNORM;
        }
        return true;
    }

    bool isOther(const Token& token, Answer& answer) {
        const std::wstring why = std::move(m_why);
        m_why.clear();
        if (why.empty() && (m_prompt.bits & RSG_OTHER) && !token.text.empty()) {
            answer.result = RTKWORD;
            answer.text = token.text;
            return true;
        }
        editor().failure(why.empty() ? L"\"" + token.text + L"\" is not " + wanted() + L"." : why);
        return false;
    }

    std::wstring wanted() const {
        const std::wstring words = m_keywords.text();
        if (words.empty()) {
            return m_kind.wanted;
        }
        return *m_kind.wanted ? m_kind.wanted + (L" or one of " + words) : L"one of " + words;
    }

    const Prompt& m_prompt;
    const Kind& m_kind;
    Accept m_accept;
    KeywordList m_keywords;
    std::wstring m_why;
};

Answer put(const Prompt& prompt, const Kind& kind, Accept accept) {
    return Question(prompt, kind, std::move(accept)).put();
}

/// What the bits of hxedInitGet say against a number.
const wchar_t* objection(double value, int bits) {
    if ((bits & RSG_NOZERO) && value == 0) {
        return L"The value must not be zero.";
    }
    if ((bits & RSG_NONEG) && value < 0) {
        return L"The value must not be negative.";
    }
    return L"";
}

Answer askTextOf(const Prompt& prompt, const Kind& kind) {
    return put(prompt, kind, [](const Token& token, Answer& answer, std::wstring&) {
        answer.text = token.text;
        return true;
    });
}

}  // namespace

Answer askKeyword(const Prompt& prompt) {
    return put(prompt, Kind(Kind::Wants::keyword),
               [](const Token&, Answer&, std::wstring&) { return false; });
}

Answer askInteger(const Prompt& prompt) {
    Kind kind(Kind::Wants::number);
    kind.wanted = L"a whole number";
    return put(prompt, kind, [&](const Token& token, Answer& answer, std::wstring& why) {
        if (!readInteger(token.text, answer.integer)) {
            return false;
        }
        why = objection(answer.integer, prompt.bits);
        return why.empty();
    });
}

Answer askReal(const Prompt& prompt) {
    Kind kind(Kind::Wants::number);
    kind.wanted = L"a number";
    return put(prompt, kind, [&](const Token& token, Answer& answer, std::wstring& why) {
        if (!readReal(token.text, answer.real)) {
            return false;
        }
        why = objection(answer.real, prompt.bits);
        return why.empty();
    });
}

Answer askPoint(const Prompt& prompt, const HxGePoint3d* base) {
    Kind kind(Kind::Wants::point);
    kind.wanted = L"a point (x,y)";
    if (base) {
        kind.base = *base;
    }
    const HxGePoint3d from = base ? *base : editor().lastPoint;
    Answer answer = put(prompt, kind, [&](const Token& token, Answer& a, std::wstring&) {
        return pointOf(token, from, a.point);
    });
    if (answer.isValue()) {
        editor().lastPoint = answer.point;
    }
    return answer;
}

Answer askDistance(const Prompt& prompt, const HxGePoint3d& base) {
    Kind kind(Kind::Wants::point);
    kind.wanted = L"a distance or a point (x,y)";
    kind.base = base;
    return put(prompt, kind, [&](const Token& token, Answer& answer, std::wstring& why) {
        if (pointOf(token, base, answer.point)) {
            answer.real = answer.point.distanceTo(base);
        } else if (!readReal(token.text, answer.real)) {
            return false;
        }
        why = objection(answer.real, prompt.bits);
        return why.empty();
    });
}

Answer askWord(const Prompt& prompt) {
    Kind kind(Kind::Wants::text);
    kind.wanted = L"a word";
    return askTextOf(prompt, kind);
}

Answer askText(const Prompt& prompt) {
    Kind kind(Kind::Wants::text);
    kind.end = AnswerEnd::line;
    kind.trims = false;
    kind.takesTransparent = false;
    kind.wanted = L"a text";
    return askTextOf(prompt, kind);
}

Answer askName(const Prompt& prompt) {
    Kind kind(Kind::Wants::text);
    kind.end = AnswerEnd::line;
    kind.wanted = L"a name";
    return askTextOf(prompt, kind);
}

Answer askEntity(const Prompt& prompt, bool nested) { return askEntityOrNames(prompt, nested, nullptr); }

Answer askEntityOrNames(const Prompt& prompt, bool nested,
                        const std::function<bool(const std::wstring&)>& isNames) {
    Kind kind(Kind::Wants::entity);
    kind.wanted = L"a point (x,y) on an object";
    kind.nested = nested;
    kind.isNames = isNames;
    kind.end = isNames ? AnswerEnd::line : AnswerEnd::blank;
    HxDbDatabase* const database = hxdbWorkingDatabase();
    const bool wasOpen = editor().documents().document(database) != nullptr;
    editor().errorNumber = 0;
    Answer answer = put(prompt, kind, [&](const Token& token, Answer& a, std::wstring&) {
        return pointOf(token, editor().lastPoint, a.point);
    });
    if (answer.isNone()) {
        editor().errorNumber = OL_NULLINPUT;
    }
    if (!answer.isValue() || !answer.text.empty()) {
        return answer;
    }
    if (wasOpen && !editor().documents().document(database)) {
        answer.result = RTCAN;  // the drawing was closed while the prompt waited
        return answer;
    }
    answer.result = pickEntity(database, answer.point, nested, answer) ? RTNORM : RTERROR;
    return answer;
}

bool pickEntity(HxDbDatabase* database, const HxGePoint3d& point, bool nested, Answer& answer) {
    PickRequest request;
    request.database = database;
    request.point = answer.point = point;
    if (database) {
        request.space = currentSpace(*database);
        request.viewport = hxdbGetCurVportId(database);
        request.halfSize = pickBoxHalfSize(*database);
    }
    PickHit hit;
    if (!database || !pickAt(request, hit)) {
        editor().errorNumber = OL_ENTSELPICK;
        return false;
    }
    answer.entity = hit.entity;
    answer.transform = hit.transform;
    answer.containers = std::move(hit.containers);
    if (!nested && !answer.containers.empty()) {
        answer.entity = answer.containers.back();
        answer.containers.clear();
        answer.transform = HxGeMatrix3d();
    }
    return true;
}

bool askYesNo(const std::wstring& question, bool defaultYes) {
    const Answer answer =
        askKeyword({question + (defaultYes ? L" [Yes/No] <Y>:" : L" [Yes/No] <N>:"), L"Yes No"});
    return answer.isNone() ? defaultYes : answer.isKeywordOf(L"Yes");
}

YesNoCancel askYesNoCancel(const std::wstring& question) {
    const Answer answer = askKeyword({question + L" [Yes/No/Cancel] <Yes>:", L"Yes No Cancel"});
    if (answer.isNone() || answer.isKeywordOf(L"Yes")) {
        return YesNoCancel::yes;
    }
    return answer.isKeywordOf(L"No") ? YesNoCancel::no : YesNoCancel::cancel;
}

}  // namespace korvex
