// Questions to the user: the one place where prompts are put, answers judged and asked for again.
#pragma once

#include "host/editor/keywords.h"
#include "sdk/hxdbid.h"
#include "sdk/hxed.h"
#include "sdk/hxge.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace korvex {

/// A prompt and what it takes besides its own kind of value.
struct Prompt {
    std::wstring text;
    const wchar_t* keywords = nullptr;  ///< as hxedInitGet takes them
    int bits = 0;                       ///< HxInitGet
};

/// What the user answered. `result` is RTNORM for a value, RTKWORD for a keyword or arbitrary input, RTNONE
/// for Enter, RTCAN when the user gave up or no input is left, RTERROR for a pick that hit nothing.
struct Answer {
    int result = RTERROR;
    std::wstring text;       ///< the keyword in global form, arbitrary input, or the text itself
    bool isKeyword = false;  ///< text is one of the keywords
    bool endsLine = true;    ///< false: more answers stand in the same line
    HxGePoint3d point;       ///< points; of a pick where it was made
    double real = 0;         ///< reals
    int integer = 0;         ///< integers
    HxDbObjectId entity;     ///< picks: the innermost object
    HxGeMatrix3d transform;  ///< picks: from the object's coordinates to the world
    std::vector<HxDbObjectId> containers;  ///< picks: the references that hold it, innermost first

    bool isValue() const { return result == RTNORM; }
    bool isNone() const { return result == RTNONE; }
    bool isCancelled() const { return result == RTCAN; }
    bool isKeywordOf(const wchar_t* global) const { return isKeyword && text == global; }
};

/// One of the keywords; arbitrary input with RSG_OTHER.
Answer askKeyword(const Prompt& prompt);
Answer askInteger(const Prompt& prompt);
Answer askReal(const Prompt& prompt);
/// A point in the current space; it becomes LASTPOINT. "@" is relative to `base`, else to LASTPOINT.
Answer askPoint(const Prompt& prompt, const HxGePoint3d* base = nullptr);
/// A length: a number, or a point whose distance from `base` counts.
Answer askDistance(const Prompt& prompt, const HxGePoint3d& base);
/// A word up to the next blank.
Answer askWord(const Prompt& prompt);
/// Text to the end of the line, as it is.
Answer askText(const Prompt& prompt);
/// A name or a list of names: to the end of the line, without blanks at both ends.
Answer askName(const Prompt& prompt);
/// An object at a point, nested ones by `nested`. RTERROR and ERRNO 7 when nothing is there.
Answer askEntity(const Prompt& prompt, bool nested);
/// The same, or a line as a whole that `isNames` takes: the answer's text, with no entity. A keyword or a
/// point alone stays one; of any other line the first word is the answer, as the question would take it
/// otherwise.
Answer askEntityOrNames(const Prompt& prompt, bool nested,
                        const std::function<bool(const std::wstring&)>& isNames);
/// The object at a point of the current space, without asking; false and ERRNO 7 when nothing is there.
bool pickEntity(HxDbDatabase* database, const HxGePoint3d& point, bool nested, Answer& answer);
/// True for Yes. RTCAN counts as No; `defaultYes` is what Enter means.
bool askYesNo(const std::wstring& question, bool defaultYes);
/// The same with a third way out.
enum class YesNoCancel { yes, no, cancel };
YesNoCancel askYesNoCancel(const std::wstring& question);

/// What hxedInitGet told the next SDK input function; taking it clears it.
struct InitGet {
    int bits = 0;
    std::wstring keywords;
};

}  // namespace korvex
