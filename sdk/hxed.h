// The editor as commands meet it: input from the user, system variables, redraw, editor notifications.
#pragma once

#include "hxads.h"
#include "hxrx.h"

// ---- input; each returns a result code (HxResult) ----

/// Bits of hxedInitGet.
enum HxInitGet : int {
    RSG_NONULL = 1,  ///< Enter alone is not accepted
    RSG_NOZERO = 2,
    RSG_NONEG = 4,
    RSG_NOLIM = 8,
    RSG_OTHER = 128,  ///< text that is no keyword is accepted as arbitrary input (RTKWORD)
};

/// Sets what the next input function accepts; it holds for that one call. `keywords` are separated by blanks;
/// a capital part is the least that must be typed ("eXit": "x", "ex" is none, "exit" is one); after a "_"
/// come the global keywords in the same order
/// ("Ja Nein _ Yes No"), which "_Yes" always reaches and which are what hxedGetInput gives. Null for none.
/// RTNORM; RTERROR for bad input.
HXSDK_API int hxedInitGet(int bits, const wchar_t* keywords);
/// The keyword (in global form) or arbitrary input after an RTKWORD. `size` in characters. RTNORM; RTERROR
/// when there is none.
HXSDK_API int hxedGetInput(wchar_t* result, std::size_t size = 512);
/// A keyword: RTNORM with the keyword in global form in `result` (arbitrary input too, when it is allowed),
/// RTNONE for Enter, RTCAN, RTERROR (ERRNO tells). Null prompt: none is shown.
HXSDK_API int hxedGetKword(const wchar_t* prompt, wchar_t* result, std::size_t size = 512);
/// A point in the current space. RTNORM, RTNONE, RTKWORD, RTCAN, RTERROR. `base` (may be null) is where a
/// rubber band starts.
HXSDK_API int hxedGetPoint(const double* base, const wchar_t* prompt, zds_point result);
/// Text: up to the end of the line when `allowBlanks`, else up to a blank.
HXSDK_API int hxedGetString(bool allowBlanks, const wchar_t* prompt, wchar_t* result, std::size_t size = 512);
HXSDK_API int hxedGetInt(const wchar_t* prompt, int* result);
HXSDK_API int hxedGetReal(const wchar_t* prompt, double* result);

/// Picks an object, however deeply it is nested. `name` is the innermost object, `point` the pick point,
/// `transform` (may be null) takes the object's coordinates to the world, `containers` the chain of block
/// references that hold it, innermost first, as RTENAME nodes (null when it is not nested; the caller
/// releases it). With `pickFlag` non-zero `point` is given by the caller and nobody is asked. RTNORM; RTNONE
/// for Enter; RTKWORD; RTCAN; RTERROR when the pick missed (ERRNO 7) or otherwise failed.
HXSDK_API int hxedNEntSelP(const wchar_t* prompt, zds_name name, zds_point point, int pickFlag,
                           zds_matrix transform, resbuf** containers);
/// Picks a top-level object; results as above.
HXSDK_API int hxedEntSel(const wchar_t* prompt, zds_name name, zds_point point);

/// ERRNO values.
enum HxErrno : int { OL_ENTSELPICK = 7 /**< the pick missed every object */, OL_NULLINPUT = 52 };

// ---- system variables ----

/// Reads a variable into a node (RTSHORT, RTLONG, RTREAL, RTSTR, RTPOINT; a string is owned by the caller:
/// free it with hxutFreeString). Name without regard to case. RTNORM; RTERROR for one that does not exist.
HXSDK_API int hxedGetVar(const wchar_t* name, resbuf* result);
/// Writes a variable; number types convert where the value fits. RTNORM; RTREJ for a read-only one or a value
/// that is not acceptable; RTERROR for one that does not exist.
HXSDK_API int hxedSetVar(const wchar_t* name, const resbuf* value);
/// Frees a string of hxedGetVar or hxutNewString.
HXSDK_API void hxutFreeString(wchar_t* text);

// ---- selection ----

/// Actions of the pick-first processor.
enum HxPickFirstAction : int {
    kHxPickFirstDrop = 9,  ///< takes the selection and its grips off the screen
};

/// Holds the objects that are selected while no command runs (top-level ones of the current space).
class HXSDK_API HxEdPickFirstProcessor : public HxRxObject {
public:
    HX_DECLARE_MEMBERS(HxEdPickFirstProcessor)
    /// Carries out an action on the current document's selection. eInvalidInput for one that does not exist.
    virtual Hx::ErrorStatus process(int action) = 0;
    /// The selected objects of the current document, in the order of selecting.
    virtual void getSelection(HxArray<HxDbObjectId>& objects) const = 0;
    /// Those that are not erased and lie in the current space are selected instead.
    virtual void setSelection(const HxArray<HxDbObjectId>& objects) = 0;
};
/// Never null.
HXSDK_API HxEdPickFirstProcessor* hxedPickFirstProcessor();

// ---- screen ----

/// Modes of hxedRedraw.
enum HxRedraw : int {
    kHxRedraw = 1,
    kHxRedrawHighlight = 3,    ///< lit until it is unlit, erased, or the window shows another drawing
    kHxRedrawUnhighlight = 4,  ///< with a null name: everything that was lit so
};

/// Redraws one object, or everything for a null name; an HxRedraw as `mode`, any other counts as kHxRedraw.
/// RTNORM.
HXSDK_API int hxedRedraw(const zds_name name, int mode);
/// A command function without a result ends so. RTNORM.
HXSDK_API int hxedRetVoid();
/// Prompts are not echoed and the command line stays silent while NOMUTT is 1.
HXSDK_API bool hxedIsQuiet();

/// Tells every listener that the layer table was changed as a whole: grids re-read it.
HXSDK_API void kvSetLayerTableChanges();

/// How the user left the layer dialog: whether its filter was inverted, and whether another filter was chosen
/// than the one that it opened with. Kept for the session, false at first.
HXSDK_API void hxedSetInvertLayerFilterFlag(bool inverted);
HXSDK_API bool hxedInvertLayerFilterFlag();
HXSDK_API void hxedSetUseCurrentFilterFlag(bool use);
HXSDK_API bool hxedUseCurrentFilterFlag();

// ---- notifications ----

/// What xrefSubcommandAttachItem and xrefSubcommandDetachItem tell: the work begins (no item), an item
/// begins, is done or has failed, all is done (no item).
enum HxXrefActivity : int {
    kXrefStart = 0,
    kXrefStartItem = 2,
    kXrefEndItem = 3,
    kXrefEnd = 4,
    kXrefAborted = 6,
};

/// Receives what happens in the editor. Belongs to its maker, who must remove it before deleting it; may be
/// added and removed from inside a notification.
class HXSDK_API HxEditorReactor : public HxRxObject {
public:
    HX_DECLARE_MEMBERS(HxEditorReactor)
    /// Global command names. At the end of a command the document is current in which it began, if it is
    /// still open.
    virtual void commandWillStart(const wchar_t*) {}
    virtual void commandEnded(const wchar_t*) {}
    virtual void commandCancelled(const wchar_t*) {}
    virtual void commandFailed(const wchar_t*) {}
    virtual void sysVarWillChange(const wchar_t*) {}
    virtual void sysVarChanged(const wchar_t*, bool /*success*/) {}
    /// `activity` is an HxXrefActivity; `path` is empty when it is about no item, the id null.
    virtual void xrefSubcommandAttachItem(class HxDbDatabase*, int /*activity*/, const wchar_t* /*path*/) {}
    virtual void xrefSubcommandDetachItem(class HxDbDatabase*, int /*activity*/, HxDbObjectId) {}
    virtual void lispWillStart(const wchar_t*) {}
    virtual void lispEnded() {}
};

/// The editor's notifications; never null.
class HXSDK_API HxEditor : public HxRxObject {
public:
    HX_DECLARE_MEMBERS(HxEditor)
    void addReactor(HxEditorReactor* reactor);
    void removeReactor(HxEditorReactor* reactor);

private:
    friend struct HxEditorAccess;
    std::vector<HxEditorReactor*> m_reactors;
};
HXSDK_API HxEditor* hxedEditor();
