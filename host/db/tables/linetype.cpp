// Linetypes: their pattern.
#include "host/db/kernel/database_imp.h"
#include "host/db/tables/symbol_record_imp.h"
#include "sdk/hxdbsymtb.h"

#include <cmath>

HX_DEFINE_MEMBERS(HxDbLinetypeTableRecord, HxDbSymbolTableRecord)

namespace korvex {

class LinetypeImp : public SymbolRecordImp {
public:
    LinetypeImp() : SymbolRecordImp("LTYPE", "AcDbLinetypeTableRecord") {}
    void clearFields() override {
        SymbolRecordImp::clearFields();
        comments.clear();
        length = 0;
        dashes.clear();
        patternChanged = false;
    }
    void readField(const ReadContext& context, const GroupCursor& group) override {
        switch (group.code()) {
        case 3: comments = group.asText(); break;
        case 40: length = group.asReal(); break;
        case 49: dashes.push_back(group.asReal()); break;
        default: SymbolRecordImp::readField(context, group);
        }
    }
    void writeFields(FieldWriter& out) const override {
        SymbolRecordImp::writeFields(out);
        if (!patternChanged && !stub->blob.empty()) {
            return;  // shapes and texts of complex linetypes stay with their dashes
        }
        out.text(3, comments);
        out.integer(72, 'A');
        out.integer(73, static_cast<long long>(dashes.size()));
        out.real(40, length);
        const bool hasElementTypes = stub->database->imp()->traits().hasSubclassMarkers;
        for (const double dash : dashes) {
            out.real(49, dash);
            if (hasElementTypes) {
                out.integer(74, 0);
            }
        }
        for (const int code : {75, 340, 46, 50, 44, 45, 9}) {
            out.absent(code);
        }
    }
    Hx::ErrorStatus mayErase() const override {
        const bool needed = name == L"Continuous" || name == L"ByLayer" || name == L"ByBlock";
        return needed ? Hx::eCannotBeErasedByCaller : Hx::eOk;
    }

    std::wstring comments;
    double length = 0;
    std::vector<double> dashes;
    bool patternChanged = false;
};

}  // namespace korvex

using namespace korvex;

HxDbLinetypeTableRecord::HxDbLinetypeTableRecord() : HxDbSymbolTableRecord(new LinetypeImp) {}

CStdStr<wchar_t> HxDbLinetypeTableRecord::comments() const { return fields<LinetypeImp>(this).comments; }
double HxDbLinetypeTableRecord::patternLength() const { return fields<LinetypeImp>(this).length; }
int HxDbLinetypeTableRecord::numDashes() const {
    return static_cast<int>(fields<LinetypeImp>(this).dashes.size());
}

double HxDbLinetypeTableRecord::dashLengthAt(int index) const {
    const std::vector<double>& dashes = fields<LinetypeImp>(this).dashes;
    return index >= 0 && index < numDashes() ? dashes[static_cast<std::size_t>(index)] : 0;
}

Hx::ErrorStatus HxDbLinetypeTableRecord::setPattern(const wchar_t* comments, const HxArray<double>& dashes) {
    const Hx::ErrorStatus status = beginChange(this);
    if (status == Hx::eOk) {
        auto& imp = fields<LinetypeImp>(this);
        imp.comments = comments ? comments : L"";
        imp.dashes.assign(dashes.begin(), dashes.end());
        imp.length = 0;
        for (const double dash : imp.dashes) {
            imp.length += std::fabs(dash);
        }
        imp.patternChanged = true;
    }
    return status;
}
