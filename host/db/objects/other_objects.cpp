// Objects with no fields of their own here: placeholders, and kinds that the host keeps without modelling.
#include "host/db/kernel/object_imp.h"
#include "sdk/hxdbdict.h"

HX_DEFINE_MEMBERS(HxDbPlaceHolder, HxDbObject)
HX_DEFINE_MEMBERS(HxDbOtherObject, HxDbObject)

namespace {

std::string narrowed(const wchar_t* name) {
    const std::wstring wide(name ? name : L"");
    return {wide.begin(), wide.end()};
}

}  // namespace

HxDbPlaceHolder::HxDbPlaceHolder() : HxDbObject(new HxDbObjectImp("ACDBPLACEHOLDER")) {}

HxDbOtherObject::HxDbOtherObject(const wchar_t* type) : HxDbObject(new HxDbObjectImp(narrowed(type))) {}
