// Result buffers, entity lists by entity name, table look-ups.
#pragma once

#include "hxdbid.h"
#include "hxge.h"
#include "hxstring.h"

/// An object's name for entity-list functions: good as long as its database is. Cleared by {0, 0}. Any other
/// content that is no object's name is refused by every function that takes one.
using zds_name = std::int64_t[2];
/// x, y, z.
using zds_point = double[3];
/// Row-major transformation, applied to column vectors.
using zds_matrix = double[4][4];

/// A byte chunk of a result buffer.
struct zds_binary {
    short clen;
    char* buf;  ///< owned by the result buffer
};

/// Value of a result buffer; restype tells which member holds it.
union zds_u_val {
    double rreal;
    double rpoint[3];
    short rint;
    wchar_t* rstring;  ///< owned by the result buffer (hxutNewString)
    zds_name rlname;
    std::int32_t rlong;
    std::int64_t mnInt64;
    zds_binary rbinary;
};

/// Restypes beside group codes.
enum HxResType : short {
    RTREAL = 5001,
    RTPOINT = 5002,
    RTSHORT = 5003,
    RTANG = 5004,
    RTSTR = 5005,
    RTENAME = 5006,
    RTLONG = 5010,
    RTDXF0 = 5020,
    RTINT64 = 5031,
};

/// One node of a chain: a group (restype = group code, -1 the entity's name, -3 the start of extended data)
/// or a value of an RT type. By group code: points 10-18, 110-112, 210-219, 1010-1013 in rpoint (y and z
/// groups that follow their x do not occur apart, others are reals; a z that is not there is 0); other reals
/// in rreal; 60-79, 170-179, 270-299, 370-389, 400-409, 1060-1070 in rint; 90-99, 420-429, 440-459, 1071 in
/// rlong; 160-169 in mnInt64; pointer codes 320-369, 390-399, 480-481, -1 and -2 in rlname; -3 has no value;
/// 310-319 and 1004 in rbinary; all others in rstring.
struct resbuf {
    resbuf* rbnext;
    short restype;
    zds_u_val resval;
};

/// A cleared node of a restype; null when memory runs out.
HXSDK_API resbuf* hxutNewRb(int restype);
/// Releases a chain with its strings and chunks; RTNORM. Null is fine.
HXSDK_API int hxutRelRb(resbuf* chain);
/// A string that a result buffer may own. Null for null.
HXSDK_API wchar_t* hxutNewString(const wchar_t* text);
/// Makes a chain from pairs of restype and value, ended by 0 (or RTNONE): reals as double, points as const
/// double*, shorts as int, longs as long, strings as const wchar_t*, names as const std::int64_t*, chunks as
/// const zds_binary*; -3 takes no value. A restype RTDXF0 stands for group 0. Null when a restype is unknown
/// or memory runs out.
HXSDK_API resbuf* hxutBuildList(int restype, ...);

/// Prints on the command line. Never more than 2,048 characters a call. RTNORM.
HXSDK_API int hxutPrintf(const wchar_t* format, ...);

// ---- entity lists; the working database ----

/// The list of an object of the working database or of an external reference that it has loaded: -1 name,
/// 0 type, its groups, -3 and its extended data per application when `applications` (a chain of RTSTR, "*"
/// for all) asks for it. The object may be open in any mode. Null when it does not exist or is erased. The
/// caller releases it.
HXSDK_API resbuf* hxdbEntGetX(const zds_name name, const resbuf* applications);
HXSDK_API resbuf* hxdbEntGet(const zds_name name);
/// Gives an object of the working database the values of a list (-1 or 5 names it), all or none.
///
/// Values take the place of those of the same code in the same subclass (100); what the list lacks stays, but
/// for an xrecord, whose content is the list's when the list names the subclass. Of a code that occurs
/// several times the list gives all values. Values before any 100 go where their code is. A colour index (62)
/// without 420 replaces a true colour, unless a list without 100 repeats the index that was there. Extended
/// data after -3 replaces that of the applications that it names. Group 2 renames a table record. Reactors
/// and extension dictionary (102 runs before the first 100) stay as they are.
///
/// RTNORM, also when nothing changes. RTERROR for a list that names no object. RTREJ for another type, handle
/// or owner than the object has, a subclass that it lacks, a name that the drawing lacks or that is taken, a
/// number that is not finite, an impossible colour or lineweight, freezing the current layer, extended data
/// of an application that is not registered, an erased object, or one that is open.
HXSDK_API int hxdbEntMod(const resbuf* list);
/// Makes an entity in the current space: LINE, POINT, CIRCLE, ARC, ELLIPSE, LWPOLYLINE, INSERT (without
/// attributes), TEXT, MTEXT, SOLID, TRACE, 3DFACE, RAY, XLINE or VIEWPORT. Type and geometry must be there;
/// 100 markers may be left out. Layer, linetype, linetype scale, colour and lineweight that the list lacks
/// are the current ones; -1, 5, 330, 67 and 410 are ignored. RTNORM; RTREJ for other types, for those newer
/// than the drawing's version and for values that hxdbEntMod would refuse.
HXSDK_API int hxdbEntMake(const resbuf* list);
/// The same, and gives the entity's name; or makes an XRECORD, DICTIONARY, DICTIONARYVAR or ACDBPLACEHOLDER
/// that has no owner yet (hxdbDictAdd gives it one). Both also make the records LAYER and LTYPE in their
/// tables: group 2 must be there, and its name free. RTNORM; RTREJ as above.
HXSDK_API int hxdbEntMakeX(const resbuf* list, zds_name result);
/// Erases an object of the working database, or un-erases what is erased. RTNORM; RTERROR also for vertices
/// and attributes, for what a drawing cannot be without and for an object that somebody else reads.
HXSDK_API int hxdbEntDel(const zds_name name);
/// The object of a handle in hexadecimal text, erased or not. RTNORM, RTERROR.
HXSDK_API int hxdbHandEnt(const wchar_t* handle, zds_name result);
/// The last entity of the current space that is not erased. RTNORM, RTERROR.
HXSDK_API int hxdbEntLast(zds_name result);

/// The name of an id, and back. eNullObjectId for the null id and the cleared name; eInvalidInput for what is
/// no name of an object of the working database or its external references.
HXSDK_API Hx::ErrorStatus hxdbGetZdsName(zds_name result, HxDbObjectId id);
HXSDK_API Hx::ErrorStatus hxdbGetObjectId(HxDbObjectId& id, const zds_name name);

/// The list of a table's record ("LAYER", "BLOCK", "LTYPE", "STYLE", "APPID" ...; 0 the table, 2 the name, 70
/// the flags, the record's own groups; no handle, owner and markers; for blocks 1, 4, 10 and 70 of the block
/// and -2 its first entity). Null when there is none. `setNext` non-zero makes hxdbTblNext go on behind it.
/// The caller releases it.
HXSDK_API resbuf* hxdbTblSearch(const wchar_t* table, const wchar_t* name, int setNext);
/// The first (`rewind` non-zero) or next record's list; null at the end. Each table has its own position; it
/// begins anew in another working database. The caller releases it.
HXSDK_API resbuf* hxdbTblNext(const wchar_t* table, int rewind);
/// The name of a record, for blocks of the block record. RTNORM, RTERROR.
HXSDK_API int hxdbTblObjName(const wchar_t* table, const wchar_t* name, zds_name result);

/// Registers an application for extended data. RTNORM (also when it was); RTERROR for a name that a symbol
/// cannot have.
HXSDK_API int hxdbRegApp(const wchar_t* application);

/// The named-object dictionary's name. RTNORM; RTERROR in drawings older than R13, which have none.
HXSDK_API int hxdbNamedObjDict(zds_name result);
/// The list of a dictionary's entry; null when there is none. `setNext` has no effect. The caller releases
/// it.
HXSDK_API resbuf* hxdbDictSearch(const zds_name dictionary, const wchar_t* name, int setNext);
/// Puts an object made by hxdbEntMakeX into a dictionary, which owns it then. The dictionary may be open for
/// write. RTNORM; RTERROR also when the name is taken or the object is an entity or part of a table.
HXSDK_API int hxdbDictAdd(const zds_name dictionary, const wchar_t* name, const zds_name object);
/// Takes an entry out and erases its object when the dictionary owns it; also the entry of an object that is
/// erased already. The dictionary may be open for write. RTNORM, RTERROR.
HXSDK_API int hxdbDictRemove(const zds_name dictionary, const wchar_t* name);
