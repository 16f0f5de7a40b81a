// Result buffers, entity lists by entity name, table look-ups.
#pragma once

#include "hxdbid.h"
#include "hxge.h"
#include "hxstring.h"

/// An object's name for entity-list functions. Cleared by {0, 0}.
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
/// or a value of an RT type. By group code: points 10-18, 110-112, 210-219, 1010-1013 in rpoint (their y and
/// z groups do not occur apart); other reals in rreal; 60-79, 170-179, 270-299, 370-389, 400-409, 1060-1070
/// in rint; 90-99, 420-429, 440-459, 1071 in rlong; 160-169 in mnInt64; pointer codes 320-369, 390-399,
/// 480-481 and -1 in rlname; 310-319 and 1004 in rbinary; all others in rstring.
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
/// const zds_binary*; -3 and 102-like markers as by their code. A restype RTDXF0 stands for group 0. Null
/// when a restype is unknown.
HXSDK_API resbuf* hxutBuildList(int restype, ...);

/// Prints on the command line. Never more than 2,048 characters a call. RTNORM.
HXSDK_API int hxutPrintf(const wchar_t* format, ...);

// ---- entity lists; the working database ----

/// The list of an object: -1 name, 0 type, its groups, -3 and its extended data per application when
/// `applications` (a chain of RTSTR, "*" for all) asks for it. Null when the object does not exist or is
/// erased. The caller releases it.
HXSDK_API resbuf* hxdbEntGetX(const zds_name name, const resbuf* applications);
HXSDK_API resbuf* hxdbEntGet(const zds_name name);
/// Gives an object the values of a list (-1 or 5 names it). RTNORM; RTREJ when a value is not acceptable or
/// the object is open elsewhere; RTERROR for a list without a name.
HXSDK_API int hxdbEntMod(const resbuf* list);
/// Makes an entity in the current space. RTNORM, RTREJ.
HXSDK_API int hxdbEntMake(const resbuf* list);
/// Makes an object that has no owner yet, and gives its name. RTNORM, RTREJ.
HXSDK_API int hxdbEntMakeX(const resbuf* list, zds_name result);
/// Erases, or un-erases what is erased. RTNORM, RTERROR.
HXSDK_API int hxdbEntDel(const zds_name name);
/// The object of a handle in hexadecimal text. RTNORM, RTERROR.
HXSDK_API int hxdbHandEnt(const wchar_t* handle, zds_name result);
/// The last entity added to the current space. RTNORM, RTERROR.
HXSDK_API int hxdbEntLast(zds_name result);

/// The name of an id, and back. eNullObjectId / eInvalidInput.
HXSDK_API Hx::ErrorStatus hxdbGetZdsName(zds_name result, HxDbObjectId id);
HXSDK_API Hx::ErrorStatus hxdbGetObjectId(HxDbObjectId& id, const zds_name name);

/// The list of a table's record ("LAYER", "BLOCK", "LTYPE", "STYLE", "APPID" ...; with 2 the name, 70 the
/// flags, for blocks -2 the first entity); null when there is none. `setNext` non-zero makes hxdbTblNext go
/// on from it. The caller releases it.
HXSDK_API resbuf* hxdbTblSearch(const wchar_t* table, const wchar_t* name, int setNext);
/// The first (`rewind` non-zero) or next record's list; null at the end.
HXSDK_API resbuf* hxdbTblNext(const wchar_t* table, int rewind);
HXSDK_API int hxdbTblObjName(const wchar_t* table, const wchar_t* name, zds_name result);

/// Registers an application for extended data. RTNORM (also when it was), RTERROR.
HXSDK_API int hxdbRegApp(const wchar_t* application);

/// The named-object dictionary's name. RTNORM, RTERROR.
HXSDK_API int hxdbNamedObjDict(zds_name result);
/// The list of a dictionary's entry; null when there is none. The caller releases it.
HXSDK_API resbuf* hxdbDictSearch(const zds_name dictionary, const wchar_t* name, int setNext);
/// Puts an object made by hxdbEntMakeX into a dictionary. RTNORM, RTERROR.
HXSDK_API int hxdbDictAdd(const zds_name dictionary, const wchar_t* name, const zds_name object);
HXSDK_API int hxdbDictRemove(const zds_name dictionary, const wchar_t* name);
