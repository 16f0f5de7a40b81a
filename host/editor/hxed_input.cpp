// The input functions of the SDK, put on the editor's questions.
#include "host/editor/editor.h"
#include "sdk/hxads.h"
#include "sdk/hxdbdatabase.h"

#include <cwchar>

using korvex::Answer;
using korvex::editor;
using korvex::InitGet;
using korvex::Prompt;

namespace {

/// A prompt with what hxedInitGet said for it.
class PreparedPrompt {
public:
    explicit PreparedPrompt(const wchar_t* text) : m_init(editor().takeInitGet()) {
        m_prompt.text = text ? text : L"";
        m_prompt.keywords = m_init.keywords.c_str();
        m_prompt.bits = m_init.bits;
    }
    const Prompt& operator*() const { return m_prompt; }
    int bits() const { return m_init.bits; }

private:
    InitGet m_init;
    Prompt m_prompt;
};

void copyText(const std::wstring& from, wchar_t* to, std::size_t size) {
    if (to && size > 0) {
        const std::size_t length = from.copy(to, size - 1);
        to[length] = L'\0';
    }
}

/// Keeps keyword or arbitrary input for hxedGetInput.
int finished(const Answer& answer) {
    editor().lastInput.reset();
    if (answer.result == RTKWORD) {
        editor().lastInput = answer.text;
    }
    return answer.result;
}

void copyPoint(const HxGePoint3d& from, zds_point to) {
    to[0] = from.x;
    to[1] = from.y;
    to[2] = from.z;
}

HxGePoint3d pointOf(const double* p) { return {p[0], p[1], p[2]}; }

resbuf* chainOf(const std::vector<HxDbObjectId>& ids) {
    resbuf* first = nullptr;
    resbuf** next = &first;
    for (const HxDbObjectId& id : ids) {
        resbuf* node = hxutNewRb(RTENAME);
        if (!node) {
            break;
        }
        hxdbGetZdsName(node->resval.rlname, id);
        *next = node;
        next = &node->rbnext;
    }
    return first;
}

/// Hands a pick to the caller.
void copyPick(const Answer& answer, zds_name name, zds_point point, zds_matrix transform,
              resbuf** containers) {
    if (point) {
        copyPoint(answer.point, point);
    }
    if (!answer.isValue()) {
        return;
    }
    if (name) {
        hxdbGetZdsName(name, answer.entity);
    }
    for (std::size_t i = 0; transform && i < 4; ++i) {
        for (std::size_t j = 0; j < 4; ++j) {
            transform[i][j] = answer.transform.entry[i][j];
        }
    }
    if (containers) {
        *containers = chainOf(answer.containers);
    }
}

int pick(const wchar_t* prompt, zds_name name, zds_point point, bool given, zds_matrix transform,
         resbuf** containers, bool nested) {
    if (containers) {
        *containers = nullptr;
    }
    const PreparedPrompt prepared(prompt);
    Answer answer;
    if (given && point) {
        answer.result =
            korvex::pickEntity(hxdbWorkingDatabase(), pointOf(point), nested, answer) ? RTNORM : RTERROR;
    } else if (!given) {
        answer = korvex::askEntity(*prepared, nested);
    }
    if (answer.isValue() || answer.result == RTERROR) {
        copyPick(answer, name, point, transform, containers);
    }
    return finished(answer);
}

}  // namespace

int hxedInitGet(int bits, const wchar_t* keywords) {
    korvex::KeywordList list;
    if (!list.assign(keywords ? keywords : L"")) {
        editor().takeInitGet();
        return RTERROR;
    }
    editor().setInitGet({bits, keywords ? keywords : L""});
    return RTNORM;
}

int hxedGetInput(wchar_t* result, std::size_t size) {
    if (!editor().lastInput || !result) {
        return RTERROR;
    }
    copyText(*editor().lastInput, result, size);
    return RTNORM;
}

int hxedGetKword(const wchar_t* prompt, wchar_t* result, std::size_t size) {
    const PreparedPrompt prepared(prompt);
    Answer answer = korvex::askKeyword(*prepared);
    const int code = finished(answer);
    if (code == RTKWORD) {
        copyText(answer.text, result, size);
        return RTNORM;
    }
    copyText(L"", result, size);
    return code;
}

int hxedGetPoint(const double* base, const wchar_t* prompt, zds_point result) {
    const PreparedPrompt prepared(prompt);
    const HxGePoint3d from = base ? pointOf(base) : HxGePoint3d();
    const Answer answer = korvex::askPoint(*prepared, base ? &from : nullptr);
    if (answer.isValue() && result) {
        copyPoint(answer.point, result);
    }
    return finished(answer);
}

int hxedGetString(bool allowBlanks, const wchar_t* prompt, wchar_t* result, std::size_t size) {
    const PreparedPrompt prepared(prompt);
    const Answer answer = allowBlanks ? korvex::askText(*prepared) : korvex::askWord(*prepared);
    if (answer.isCancelled()) {
        return RTCAN;
    }
    copyText(answer.isValue() ? answer.text : L"", result, size);
    return RTNORM;
}

int hxedGetInt(const wchar_t* prompt, int* result) {
    const PreparedPrompt prepared(prompt);
    const Answer answer = korvex::askInteger(*prepared);
    if (answer.isValue() && result) {
        *result = answer.integer;
    }
    return finished(answer);
}

int hxedGetReal(const wchar_t* prompt, double* result) {
    const PreparedPrompt prepared(prompt);
    const Answer answer = korvex::askReal(*prepared);
    if (answer.isValue() && result) {
        *result = answer.real;
    }
    return finished(answer);
}

int hxedNEntSelP(const wchar_t* prompt, zds_name name, zds_point point, int pickFlag, zds_matrix transform,
                 resbuf** containers) {
    return pick(prompt, name, point, pickFlag != 0, transform, containers, true);
}

int hxedEntSel(const wchar_t* prompt, zds_name name, zds_point point) {
    return pick(prompt, name, point, false, nullptr, nullptr, false);
}
