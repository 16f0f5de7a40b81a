// Names and meanings of the host's error statuses.
#include "sdk/hxtypes.h"

#include <algorithm>
#include <iterator>

namespace Hx {
namespace {

struct StatusText {
    ErrorStatus status;
    const wchar_t* text;
};

/// Sorted by number.
constexpr StatusText kTexts[] = {
    {eOk, L"eOk: done"},
    {eNotImplementedYet, L"eNotImplementedYet: not implemented"},
    {eNotApplicable, L"eNotApplicable: not applicable to this object or drawing"},
    {eInvalidInput, L"eInvalidInput: invalid input"},
    {eAmbiguousInput, L"eAmbiguousInput: ambiguous input"},
    {eOutOfMemory, L"eOutOfMemory: out of memory"},
    {eBufferTooSmall, L"eBufferTooSmall: the buffer is too small"},
    {eInvalidOpenState, L"eInvalidOpenState: invalid open state"},
    {eInvalidContext, L"eInvalidContext: not possible here and now"},
    {eDuplicateKey, L"eDuplicateKey: the name is taken"},
    {eDuplicateRecordName, L"eDuplicateRecordName: a record of that name exists"},
    {eNullObject, L"eNullObject: there is no object behind the id"},
    {eNullObjectId, L"eNullObjectId: the object id is null"},
    {eNullHandle, L"eNullHandle: the handle is null"},
    {eUnknownHandle, L"eUnknownHandle: unknown handle"},
    {eNotInDatabase, L"eNotInDatabase: not in a database"},
    {eKeyNotFound, L"eKeyNotFound: there is no entry of that name"},
    {eIteratorDone, L"eIteratorDone: there are no more items"},
    {eVetoed, L"eVetoed: vetoed"},
    {eNotThatKindOfClass, L"eNotThatKindOfClass: not that kind of class"},
    {eWrongClass, L"eWrongClass: the object is of another class"},
    {eInvalidDxfCode, L"eInvalidDxfCode: invalid group code"},
    {eBadDxfSequence, L"eBadDxfSequence: damaged drawing file"},
    {eFilerError, L"eFilerError: reading or writing the drawing failed"},
    {eFileAccessErr, L"eFileAccessErr: the file cannot be accessed"},
    {eFileNotFound, L"eFileNotFound: file not found"},
    {eFileSystemErr, L"eFileSystemErr: file system error"},
    {eCannotBeErasedByCaller, L"eCannotBeErasedByCaller: the object cannot be erased"},
    {eNoActiveTransactions, L"eNoActiveTransactions: no transaction is active"},
    {eTransactionOpenWhileCommandEnded,
     L"eTransactionOpenWhileCommandEnded: the command ended with an open transaction"},
    {eNotTopTransaction, L"eNotTopTransaction: not the innermost transaction"},
    {eNotOpenForRead, L"eNotOpenForRead: not open"},
    {eNotOpenForWrite, L"eNotOpenForWrite: not open for write"},
    {eAlreadyInDb, L"eAlreadyInDb: already in a database"},
    {eWasOpenForRead, L"eWasOpenForRead: open for read elsewhere"},
    {eWasOpenForWrite, L"eWasOpenForWrite: open for write elsewhere"},
    {eAtMaxReaders, L"eAtMaxReaders: too many readers"},
    {eWasErased, L"eWasErased: the object is erased"},
    {eWasOpenForUndo, L"eWasOpenForUndo: undo is restoring the object"},
    {eIsWriteProtected, L"eIsWriteProtected: write-protected"},
    {eWasOpenForNotify, L"eWasOpenForNotify: the object is sending notifications"},
    {eXdataSizeExceeded, L"eXdataSizeExceeded: too much extended data"},
    {eRegappIdNotFound, L"eRegappIdNotFound: the application name is not registered"},
    {eRefused, L"eRefused: the drawing's rules do not allow it"},
    {eNoDocument, L"eNoDocument: no document"},
    {eNoDatabase, L"eNoDatabase: no database"},
    {eLockViolation, L"eLockViolation: the document is locked"},
    {eNoUndo, L"eNoUndo: nothing to undo or redo"},
    {eXrefNotFound, L"eXrefNotFound: the external reference was not found"},
    {eXrefCircular, L"eXrefCircular: the external reference refers to itself"},
    {eCancelled, L"eCancelled: cancelled"},
};

}  // namespace

const wchar_t* errorText(ErrorStatus status) {
    const auto* const found =
        std::lower_bound(std::begin(kTexts), std::end(kTexts), status,
                         [](const StatusText& entry, ErrorStatus wanted) { return entry.status < wanted; });
    return found != std::end(kTexts) && found->status == status ? found->text : L"unknown status";
}

}  // namespace Hx
