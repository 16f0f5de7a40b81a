// All system variables, one a row, and the functions behind those that are not simply kept somewhere.
#include "host/editor/variable_table.h"

#include "host/db/kernel/header.h"
#include "host/editor/command_processor.h"
#include "host/editor/documents.h"
#include "host/editor/editor.h"
#include "host/editor/number_text.h"
#include "host/editor/view.h"
#include "sdk/hxdbdict.h"
#include "sdk/hxdbentity.h"

#include <QDateTime>
#include <QFileInfo>

#include <algorithm>

namespace korvex {

namespace {

using Value = VariableValue;

std::wstring refusal(Hx::ErrorStatus status, const std::wstring& what) {
    return status == Hx::eOk ? std::wstring() : what + L" (" + Hx::errorText(status) + L").";
}

// ---- the current layer, linetype, colour and lineweight ----

Value currentLayer(const HxDbDatabase* database) {
    std::wstring name = L"0";
    if (database) {
        const HxDbObjectPointer<HxDbLayerTableRecord> layer(database->clayer(), HxDb::kForRead);
        name = layer ? layer->name() : headerText(*database, L"$CLAYER", L"0");
    }
    return Value::ofText(name);
}

std::wstring setCurrentLayer(HxDbDatabase* database, const Value& value) {
    HxDbLayerTable* table = nullptr;
    HxDbObjectId id;
    Hx::ErrorStatus status = database->getLayerTable(table, HxDb::kForRead);
    if (status == Hx::eOk) {
        status = table->getAt(value.text.c_str(), id);
        table->close();
    }
    if (status == Hx::eKeyNotFound || status == Hx::eWasErased) {
        return L"There is no layer \"" + value.text + L"\": make it with LAYER or -LAYER New.";
    }
    status = status == Hx::eOk ? database->setClayer(id) : status;
    return refusal(status, status == Hx::eRefused
                               ? L"Layer \"" + value.text +
                                     L"\" can not be current: it is frozen or belongs to an "
                                     L"external reference"
                               : L"Layer \"" + value.text + L"\" can not be current");
}

std::wstring setCurrentLinetype(HxDbDatabase* database, const Value& value) {
    const HxDbObjectPointer<HxDbSymbolTable> table(database->linetypeTableId(), HxDb::kForRead);
    const CStdStr<wchar_t> name(value.text);
    const bool special = name.CompareNoCase(L"ByLayer") == 0 || name.CompareNoCase(L"ByBlock") == 0;
    if (!special && !(table && table->has(name.c_str()))) {
        return L"There is no linetype \"" + value.text + L"\" in this drawing.";
    }
    setHeaderValue(*database, L"$CELTYPE", {{6, value.text, 0, 0}});
    return {};
}

Value currentColor(const HxDbDatabase* database) {
    const long long index = database ? headerInteger(*database, L"$CECOLOR", 256) : 256;
    return Value::ofText(index == 256 ? L"BYLAYER" : index == 0 ? L"BYBLOCK" : std::to_wstring(index));
}

std::wstring setCurrentColor(HxDbDatabase* database, const Value& value) {
    const CStdStr<wchar_t> name(value.text);
    const std::int16_t standard = HxCmColor::standardColorIndex(value.text.c_str());
    int index = standard;
    if (name.CompareNoCase(L"ByBlock") == 0) {
        index = HxCmColor::kIndexByBlock;
    } else if (standard == HxCmColor::kIndexWhite && name.CompareNoCase(L"white") != 0 &&
               (!readInteger(value.text, index) || index < 0 || index > 256)) {
        return L"\"" + value.text + L"\" is no colour: give BYLAYER, BYBLOCK, a colour's name or 1 to 255.";
    }
    setHeaderValue(*database, L"$CECOLOR", {{62, L"", 0, index}});
    return {};
}

std::wstring setCurrentLineweight(HxDbDatabase* database, const Value& value) {
    constexpr int kWeights[] = {-3, -2, -1, 0,  5,  9,  13,  15,  18,  20,  25,  30,  35, 40,
                                50, 53, 60, 70, 80, 90, 100, 106, 120, 140, 158, 200, 211};
    if (std::find(std::begin(kWeights), std::end(kWeights), value.integer) == std::end(kWeights)) {
        return L"CELWEIGHT takes -1 (ByLayer), -2 (ByBlock), -3 (Default) or a lineweight in hundredths of a "
               L"millimetre such as 25 or 50.";
    }
    setHeaderValue(*database, L"$CELWEIGHT", {{370, L"", 0, value.integer}});
    return {};
}

// ---- spaces and views ----

Value tileMode(const HxDbDatabase* database) {
    return Value::ofInteger(!database || database->tilemode() ? 1 : 0);
}

std::wstring setTileMode(HxDbDatabase* database, const Value& value) {
    if (value.integer != 0 && value.integer != 1) {
        return L"TILEMODE takes 1 (model space) or 0 (layout).";
    }
    return refusal(database->setTilemode(value.integer != 0), L"This drawing has no layout to go to");
}

constexpr int kModelViewport = 2;

Value currentViewport(const HxDbDatabase* database) {
    return Value::ofInteger(!database || database->tilemode() ? kModelViewport : database->cvport());
}

std::wstring setCurrentViewport(HxDbDatabase* database, const Value& value) {
    if (database->tilemode()) {
        return value.integer == kModelViewport
                   ? L""
                   : L"Model space has one viewport, number 2: go to a layout first.";
    }
    return refusal(database->setCvport(static_cast<std::int16_t>(value.integer)),
                   L"The layout has no viewport with number " + std::to_wstring(value.integer) +
                       L" that is on");
}

Value currentTab(const HxDbDatabase* database) {
    return Value::ofText(database ? hxdbLayoutManager()->getActiveLayoutName() : CStdStr<wchar_t>(L"Model"));
}

std::wstring setCurrentTab(HxDbDatabase* database, const Value& value) {
    if (CStdStr<wchar_t>(value.text).CompareNoCase(L"Model") == 0) {
        return refusal(database->setTilemode(true), L"Model space can not become current");
    }
    const Hx::ErrorStatus status = hxdbLayoutManager()->setCurrentLayout(value.text.c_str());
    if (status == Hx::eKeyNotFound) {
        return L"There is no layout \"" + value.text + L"\": LAYOUT ? lists them.";
    }
    return refusal(status == Hx::eOk ? database->setTilemode(false) : status,
                   L"Layout \"" + value.text + L"\" can not become current");
}

View viewOf(const HxDbDatabase* database) {
    return database ? currentView(*const_cast<HxDbDatabase*>(database)) : View();
}
Value viewCenter(const HxDbDatabase* database) { return Value::ofPoint(viewOf(database).center); }
Value viewSize(const HxDbDatabase* database) { return Value::ofReal(viewOf(database).height); }

// ---- the drawing and its file ----

Value plotStyleMode(const HxDbDatabase* database) {
    return Value::ofInteger(!database || database->plotStyleMode() ? 1 : 0);
}
Value drawingVersion(const HxDbDatabase* database) {
    return Value::ofText(database ? database->version() : L"");
}

Value drawingName(const HxDbDatabase*) { return Value::ofText(curDoc() ? curDoc()->docTitle() : L""); }

Value drawingFolder(const HxDbDatabase*) {
    const std::wstring path = curDoc() ? curDoc()->fileName() : L"";
    return Value::ofText(path.substr(0, path.rfind(L'/') + 1));
}

Value drawingModified(const HxDbDatabase* database) {
    return Value::ofInteger(database && database->isModified() ? 1 : 0);
}

// ---- the editor ----

Value errorNumber(const HxDbDatabase*) { return Value::ofInteger(editor().errorNumber); }

std::wstring setErrorNumber(HxDbDatabase*, const Value& value) {
    editor().errorNumber = static_cast<int>(value.integer);
    return {};
}

Value lastPoint(const HxDbDatabase*) { return Value::ofPoint(editor().lastPoint); }

std::wstring setLastPoint(HxDbDatabase*, const Value& value) {
    editor().lastPoint = value.point;
    return {};
}

Value commandActive(const HxDbDatabase*) {
    const CommandProcessor& processor = editor().processor();
    return Value::ofInteger((processor.isRunning() ? 1 : 0) + (processor.isRunningTransparent() ? 2 : 0));
}

Value commandNames(const HxDbDatabase*) { return Value::ofText(editor().processor().runningNames()); }

Value undoControl(const HxDbDatabase*) {
    const Document* document = editor().documents().current();
    return Value::ofInteger(document && document->undo().isUserGroupOpen() ? 9 : 1);
}

Value now(const HxDbDatabase*) {
    const QDateTime time = QDateTime::currentDateTime();
    constexpr double kDay = 24.0 * 60 * 60 * 1000;
    return Value::ofReal(static_cast<double>(time.date().toJulianDay()) +
                         time.time().msecsSinceStartOfDay() / kDay);
}

constexpr bool kReadOnly = true;
constexpr bool kWritable = false;

SystemVariable session(const wchar_t* name, double low, double high, const wchar_t* initial) {
    return {name, RTSHORT, Keep::session, kWritable, low, high, initial, L"", 0, nullptr, nullptr, nullptr};
}

SystemVariable profile(const wchar_t* name, double low, double high, const wchar_t* initial,
                       const wchar_t* path) {
    return {name, RTSHORT, Keep::profile, kWritable, low, high, initial, path, 0, nullptr, nullptr, nullptr};
}

SystemVariable header(const wchar_t* name, double low, double high, const wchar_t* initial,
                      const wchar_t* place, int code, const char* since, short type = RTSHORT) {
    return {name, type, Keep::header, kWritable, low, high, initial, place, code, since, nullptr, nullptr};
}

SystemVariable own(const wchar_t* name, short type, Value (*get)(const HxDbDatabase*),
                   std::wstring (*set)(HxDbDatabase*, const Value&) = nullptr, Keep keep = Keep::own) {
    return {name, type, keep, set ? kWritable : kReadOnly, 0, 0, L"", L"", 0, nullptr, get, set};
}

}  // namespace

const std::vector<SystemVariable>& variableTable() {
    constexpr const char* kR12 = "AC1009";
    constexpr const char* k2000 = "AC1015";
    static const std::vector<SystemVariable> table = {
        session(L"NOMUTT", 0, 1, L"0"),
        session(L"CMDECHO", 0, 1, L"1"),
        session(L"EXPERT", 0, 5, L"0"),

        profile(L"LAYERDLGMODE", 0, 1, L"1", L"SystemVariables\\LAYERDLGMODE"),
        profile(L"LAYEROVERRIDEHIGHLIGHT", 0, 1, L"1", L"SystemVariables\\LAYEROVERRIDEHIGHLIGHT"),
        profile(L"SHOWLAYERUSAGE", 0, 1, L"0", L"SystemVariables\\SHOWLAYERUSAGE"),
        profile(L"LAYERFILTERALERT", 0, 3, L"2", L"SystemVariables\\LAYERFILTERALERT"),
        profile(L"LAYISOMODE", 0, 1, L"0", L"SystemVariables\\LAYISOMODE"),
        profile(L"LAYISOVPFREEZE", 0, 1, L"1", L"SystemVariables\\LAYISOVPFREEZE"),
        profile(L"LWUNITS", 0, 1, L"1", L"SystemVariables\\LWUNITS"),
        profile(L"PICKBOX", 0, 50, L"3", L"SystemVariables\\PICKBOX"),
        profile(L"FILEDIA", 0, 1, L"1", L"SystemVariables\\FILEDIA"),
        profile(L"COLORTHEME", 0, 1, L"0", L"COLORTHEME"),

        header(L"REGENMODE", 0, 1, L"1", L"$REGENMODE", 70, kR12),
        header(L"ATTMODE", 0, 2, L"1", L"$ATTMODE", 70, kR12),
        header(L"LUNITS", 1, 5, L"2", L"$LUNITS", 70, kR12),
        header(L"LUPREC", 0, 8, L"4", L"$LUPREC", 70, kR12),
        header(L"AUNITS", 0, 4, L"0", L"$AUNITS", 70, kR12),
        header(L"AUPREC", 0, 8, L"0", L"$AUPREC", 70, kR12),
        header(L"LTSCALE", 1e-9, 1e12, L"1", L"$LTSCALE", 40, kR12, RTREAL),
        header(L"INSUNITS", 0, 24, L"0", L"$INSUNITS", 70, k2000),
        header(L"MEASUREMENT", 0, 1, L"0", L"$MEASUREMENT", 70, "AC1014"),
        header(L"EXTNAMES", 0, 1, L"1", L"$EXTNAMES", 290, k2000),
        header(L"LWDISPLAY", 0, 1, L"0", L"$LWDISPLAY", 290, k2000),
        {L"CELTYPE", RTSTR, Keep::header, kWritable, 0, 0, L"ByLayer", L"$CELTYPE", 6, kR12, nullptr,
         setCurrentLinetype},
        {L"CELWEIGHT", RTSHORT, Keep::header, kWritable, -3, 211, L"-1", L"$CELWEIGHT", 370, k2000, nullptr,
         setCurrentLineweight},

        own(L"CLAYER", RTSTR, currentLayer, setCurrentLayer),
        own(L"CECOLOR", RTSTR, currentColor, setCurrentColor),
        own(L"TILEMODE", RTSHORT, tileMode, setTileMode),
        own(L"CVPORT", RTSHORT, currentViewport, setCurrentViewport),
        own(L"CTAB", RTSTR, currentTab, setCurrentTab),
        own(L"VIEWCTR", RTPOINT, viewCenter),
        own(L"VIEWSIZE", RTREAL, viewSize),
        own(L"PSTYLEMODE", RTSHORT, plotStyleMode),
        own(L"ACADVER", RTSTR, drawingVersion),
        own(L"DWGNAME", RTSTR, drawingName),
        own(L"DWGPREFIX", RTSTR, drawingFolder),
        own(L"DBMOD", RTSHORT, drawingModified),
        own(L"ERRNO", RTSHORT, errorNumber, setErrorNumber, Keep::session),
        own(L"LASTPOINT", RTPOINT, lastPoint, setLastPoint, Keep::session),
        own(L"CMDACTIVE", RTSHORT, commandActive),
        own(L"CMDNAMES", RTSTR, commandNames),
        own(L"UNDOCTL", RTSHORT, undoControl),
        own(L"DATE", RTREAL, now),
    };
    return table;
}

}  // namespace korvex
