// Objects that are not drawn: dictionaries, xrecords, placeholders, layouts.
#pragma once

#include "hxdbobject.h"

/// Steps through a dictionary's entries in stored order. Made by newIterator; the caller deletes it. The
/// entry that it stands at, and those before it, may be removed meanwhile; it goes on with the next one.
class HXSDK_API HxDbDictionaryIterator {
public:
    bool done() const;
    /// Goes to the next entry; false at the end.
    bool next();
    /// Empty at the end, and for an entry that was removed.
    const wchar_t* name() const;
    HxDbObjectId objectId() const;
    Hx::ErrorStatus getObject(HxDbObject*& object, HxDb::OpenMode mode) const;

private:
    friend class HxDbDictionary;
    explicit HxDbDictionaryIterator(const HxDbObjectId& dictionary) : m_dictionary(dictionary) {
        skipErased();
    }
    static constexpr std::size_t kGone = static_cast<std::size_t>(-1);
    void skipErased();
    std::size_t placeNow() const;
    HxDbObjectId m_dictionary;
    std::size_t m_at = 0;
    HxDbObjectId m_object;  ///< of the entry that it stands at; null at the end
};

/// Objects by name (case ignored, spelling kept). Entries whose object is erased are not seen.
class HXSDK_API HxDbDictionary : public HxDbObject {
public:
    HX_DECLARE_MEMBERS(HxDbDictionary)
    HxDbDictionary();
    /// eKeyNotFound.
    Hx::ErrorStatus getAt(const wchar_t* name, HxDbObjectId& id) const;
    Hx::ErrorStatus getAt(const wchar_t* name, HxDbObject*& object, HxDb::OpenMode mode) const;
    bool has(const wchar_t* name) const;
    /// The name of an entry, also of one whose object is erased; eKeyNotFound when the object is not in it.
    Hx::ErrorStatus nameAt(HxDbObjectId id, CStdStr<wchar_t>& name) const;
    std::size_t numEntries() const;
    /// Adds an object made with new, or replaces the entry of that name (the old object is erased when the
    /// dictionary owns it). The object stays open for write: close it. eInvalidInput for an empty name.
    Hx::ErrorStatus setAt(const wchar_t* name, HxDbObject* object, HxDbObjectId& id);
    /// Takes the entry out and erases the object when the dictionary owns it; an entry whose object is erased
    /// already goes, too. eKeyNotFound.
    Hx::ErrorStatus remove(const wchar_t* name);
    Hx::ErrorStatus setName(const wchar_t* oldName, const wchar_t* newName);
    HxDbDictionaryIterator* newIterator() const;

protected:
    explicit HxDbDictionary(HxDbObjectImp* imp) : HxDbObject(imp) {}
};

/// A dictionary that answers with its default for names that it lacks.
class HXSDK_API HxDbDictionaryWithDefault : public HxDbDictionary {
public:
    HX_DECLARE_MEMBERS(HxDbDictionaryWithDefault)
    HxDbDictionaryWithDefault();
    HxDbObjectId defaultId() const;
    Hx::ErrorStatus setDefaultId(HxDbObjectId id);
};

/// A list of groups of a module's own.
class HXSDK_API HxDbXrecord : public HxDbObject {
public:
    HX_DECLARE_MEMBERS(HxDbXrecord)
    HxDbXrecord();
    /// The groups after the duplicate-record flag (280) as a chain that the caller releases; null when there
    /// are none.
    resbuf* rbChain() const;
    /// eInvalidDxfCode for codes that an xrecord cannot hold (0, 5, 100, 105, extended data).
    Hx::ErrorStatus setFromRbChain(const resbuf* chain);
};

/// Steps through an xrecord's groups after the duplicate-record flag as they stand, without making the object
/// or copying its content. The xrecord may be open in any mode, and must not be changed meanwhile.
class HXSDK_API HxDbXrecordWalk {
public:
    explicit HxDbXrecordWalk(HxDbObjectId xrecord);
    ~HxDbXrecordWalk();
    HxDbXrecordWalk(const HxDbXrecordWalk&) = delete;
    HxDbXrecordWalk& operator=(const HxDbXrecordWalk&) = delete;

    /// eOk; eNullObjectId, eWasErased, eWrongClass: then there are no groups.
    Hx::ErrorStatus status() const;
    /// Goes to the first or next group; false at the end.
    bool next();
    /// Begins again.
    void rewind();
    int code() const;
    // The group's value; 0, empty or the null id when it is of another kind.
    std::int64_t integer() const;
    double real() const;
    void text(CStdStr<wchar_t>& text) const;
    CStdStr<wchar_t> text() const;
    /// Null id for a handle that the drawing does not have. May be erased.
    HxDbObjectId objectId() const;

private:
    class Imp;
    Imp* m_imp;
};

/// A named thing with no content, such as a plot style.
class HXSDK_API HxDbPlaceHolder : public HxDbObject {
public:
    HX_DECLARE_MEMBERS(HxDbPlaceHolder)
    HxDbPlaceHolder();
};

/// A sheet: its name, its place among the tabs, its block of paper space.
class HXSDK_API HxDbLayout : public HxDbObject {
public:
    HX_DECLARE_MEMBERS(HxDbLayout)
    HxDbLayout();
    CStdStr<wchar_t> getLayoutName() const;
    int getTabOrder() const;
    HxDbObjectId getBlockTableRecordId() const;
};

/// The layouts of the working database.
class HXSDK_API HxDbLayoutManager {
public:
    /// "Model", or the layout's name; empty without a database.
    CStdStr<wchar_t> getActiveLayoutName() const;
    /// The block record of the current space's layout; null id when there is none.
    HxDbObjectId getActiveLayoutBTRId(const HxDbDatabase* database) const;
    /// The layout objects in tab order, "Model" first.
    void layouts(const HxDbDatabase* database, HxArray<HxDbObjectId>& ids) const;
    /// Makes a layout current: its paper space becomes the drawing's active one. eKeyNotFound.
    Hx::ErrorStatus setCurrentLayout(const wchar_t* name);
    Hx::ErrorStatus setCurrentLayoutId(HxDbObjectId id);
};
HXSDK_API HxDbLayoutManager* hxdbLayoutManager();

/// An object that the host keeps but does not model.
class HXSDK_API HxDbOtherObject : public HxDbObject {
public:
    HX_DECLARE_MEMBERS(HxDbOtherObject)
    explicit HxDbOtherObject(const wchar_t* dxfName);
};
