// The host's basic types: export mark, error statuses, result codes of input and entity-list functions.
#pragma once

#include <cstdint>

#if defined(KORVEX_HOST_BUILD)
#define HXSDK_API __attribute__((visibility("default")))
#else
#define HXSDK_API
#endif

/// Marks what a module exports: unmangled, visible.
#define HX_EXPORT extern "C" __attribute__((visibility("default")))

namespace Hx {

/// Result of an operation on the database. The numbers are fixed.
enum ErrorStatus : int {
    eOk = 0,
    eNotImplementedYet = 1,
    eNotApplicable = 2,  ///< makes no sense for this object or drawing
    eInvalidInput = 3,
    eAmbiguousInput = 4,
    eOutOfMemory = 6,
    eBufferTooSmall = 7,
    eInvalidOpenState = 8,
    eInvalidContext = 9,
    eDuplicateKey = 12,  ///< the name is taken
    eDuplicateRecordName = 13,
    eNullObject = 15,  ///< nothing stands behind the id
    eNullObjectId = 16,
    eNullHandle = 17,
    eUnknownHandle = 19,
    eNotInDatabase = 21,
    eKeyNotFound = 26,  ///< no entry or record of that name
    eIteratorDone = 30,
    eVetoed = 34,
    eNotThatKindOfClass = 45,
    eWrongClass = 46,  ///< the object is of another class
    eInvalidDxfCode = 51,
    eBadDxfSequence = 53,  ///< damaged drawing file
    eFilerError = 54,
    eFileAccessErr = 56,
    eFileNotFound = 57,
    eFileSystemErr = 58,
    eCannotBeErasedByCaller = 64,
    eNoActiveTransactions = 72,
    eTransactionOpenWhileCommandEnded = 73,
    eNotTopTransaction = 74,
    eNotOpenForRead = 78,
    eNotOpenForWrite = 79,
    eAlreadyInDb = 80,
    eWasOpenForRead = 82,   ///< others have it open for read
    eWasOpenForWrite = 83,  ///< it is open for write
    eAtMaxReaders = 84,
    eWasErased = 85,
    eWasOpenForUndo = 86,  ///< undo or redo is restoring it
    eIsWriteProtected = 88,
    eWasOpenForNotify = 90,  ///< it is sending notifications
    eXdataSizeExceeded = 95,
    eRegappIdNotFound = 96,
    eRefused = 105,  ///< the drawing's rules do not allow it
    eNoDocument = 123,
    eNoDatabase = 124,
    eLockViolation = 130,  ///< the document is locked by someone else
    eNoUndo = 140,         ///< nothing to undo or redo
    eXrefNotFound = 150,
    eXrefCircular = 151,
    eCancelled = 160,  ///< the user gave it up; everything is as before
};

/// The status's name and, in a few words, its meaning; for messages and logs. Never null.
HXSDK_API const wchar_t* errorText(ErrorStatus status);

}  // namespace Hx

/// Result codes of input functions, entity-list functions and system variables.
enum HxResult : int {
    RTNONE = 5000,  ///< no input: only Enter
    RTNORM = 5100,  ///< done
    RTERROR = -5001,
    RTCAN = -5002,  ///< the user cancelled
    RTREJ = -5003,  ///< refused by the host
    RTFAIL = -5004,
    RTKWORD = -5005,  ///< a keyword (or arbitrary input) was entered; hxedGetInput tells which
};
