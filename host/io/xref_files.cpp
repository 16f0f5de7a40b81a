// Finding and loading external references.
#include "host/io/xref_files.h"

#include "host/base/progress.h"
#include "host/db/groups/group_writer.h"
#include "host/db/kernel/database_imp.h"
#include "host/db/kernel/entity_access.h"
#include "host/db/tables/layer_imp.h"
#include "host/db/tables/record_names.h"
#include "sdk/hxdbentity.h"

#include <QDir>
#include <QFileInfo>

namespace korvex {

namespace {

constexpr long long kDependentAndResolved = 16 | 32;
constexpr char kSearchPath[] = "KORVEX_SEARCH_PATH";

QString cleaned(const std::wstring& path) {
    return QDir::cleanPath(QString::fromStdWString(path).replace(QLatin1Char('\\'), QLatin1Char('/')));
}

QStringList candidates(const HxDbDatabase& host, const std::wstring& path) {
    const QString wanted = cleaned(path);
    const QString fileName = wanted.section(QLatin1Char('/'), -1);
    const QDir beside = QFileInfo(QString::fromWCharArray(host.getFilename())).absoluteDir();
    QStringList all;
    if (QDir::isAbsolutePath(wanted)) {
        all << wanted;
    }
    all << beside.filePath(wanted) << beside.filePath(fileName);
    for (const QString& folder : QString::fromLocal8Bit(qgetenv(kSearchPath)).split(QLatin1Char(':'))) {
        if (!folder.isEmpty()) {
            all << QDir(folder).filePath(fileName);
        }
    }
    return all;
}

QString findFile(const HxDbDatabase& host, const std::wstring& path) {
    for (const QString& candidate : candidates(host, path)) {
        if (QFileInfo(candidate).isFile()) {
            return QFileInfo(candidate).canonicalFilePath();
        }
    }
    return {};
}

/// The files from the outermost drawing down to the one whose references are being loaded.
using Chain = std::vector<QString>;

Chain chainOf(const HxDbDatabase& host) {
    Chain chain;
    for (const HxDbDatabase* at = &host; at; at = at->imp()->xrefHost) {
        chain.push_back(QFileInfo(QString::fromWCharArray(at->getFilename())).canonicalFilePath());
    }
    return chain;
}

void loadBlock(HxDbStub& block, std::vector<std::wstring>& messages) {
    const auto* record = HxDbBlockTableRecord::cast(materialise(block));
    if (!record || !record->isFromExternalReference() || record->isDependent()) {
        return;
    }
    Hx::ErrorStatus status = Hx::eOk;
    std::wstring error;
    std::unique_ptr<HxDbDatabase> drawing =
        loadXref(*block.database, record->pathName(), status, error, messages);
    if (!drawing) {
        messages.push_back(L"External reference \"" + recordName(block) + L"\" is not loaded: " + error +
                           L".");
        return;
    }
    setXref(block, std::move(drawing));
    addXrefLayers(block, false);
}

/// A layer's groups in the host's form, without names of other tables.
std::string layerGroups(const HxDbDatabase::Imp& db, std::uint64_t handle, const std::wstring& name,
                        const LayerImp& layer) {
    const VersionTraits traits = db.traits();
    GroupWriter out(db.format);
    out.rawText(0, "LAYER");
    if (db.writesHandles) {
        out.handle(5, handle);
    }
    if (traits.hasSubclassMarkers) {
        out.handle(330, db.table(TableKind::layer)->handle);
        out.rawText(100, "AcDbSymbolTableRecord");
        out.rawText(100, "AcDbLayerTableRecord");
    }
    out.text(2, name);
    out.integer(70, layer.flags | kDependentAndResolved);
    const long long index = layer.color.colorIndex();
    out.integer(62, layer.off ? -index : index);
    if (layer.color.isByColor() && traits.hasTrueColors) {
        out.integer(420, layer.color.red() << 16 | layer.color.green() << 8 | layer.color.blue());
    }
    out.rawText(6, "Continuous");
    if (traits.hasLineWeights) {
        out.integer(290, layer.plottable ? 1 : 0);
        out.integer(370, layer.lineWeight);
    }
    return out.take();
}

void addRecord(HxDbDatabase& host, HxDbStub& table, const std::wstring& name, const LayerImp& layer) {
    auto* record = new HxDbLayerTableRecord;
    auto& fresh = fields<LayerImp>(record);
    fresh.name = name;
    fresh.flags = layer.flags | kDependentAndResolved;
    fresh.off = layer.off;
    fresh.color = layer.color;
    fresh.plottable = layer.plottable;
    fresh.lineWeight = layer.lineWeight;
    addToDatabase(host, record, &table);
    record->close();
}

/// Not in the file as long as it is not changed.
void addImplied(HxDbDatabase::Imp& db, HxDbStub& table, const std::wstring& name, const LayerImp& layer) {
    HxDbStub& stub = db.newStub();
    stub.recordClass = &recordClass("LAYER", RecordPlace::tableRecord);
    stub.owner = &table;
    stub.implicit = true;
    stub.handleInFile = db.writesHandles;
    db.handles.add(db.handles.next(), &stub);
    stub.blob = Blob(layerGroups(db, stub.handle, name, layer), db.names.size());
    appendMember(table, stub);
    indexName(stub);
}

}  // namespace

std::unique_ptr<HxDbDatabase> loadXref(const HxDbDatabase& host, const std::wstring& path,
                                       Hx::ErrorStatus& status, std::wstring& error,
                                       std::vector<std::wstring>& messages) {
    const QString file = findFile(host, path);
    if (file.isEmpty()) {
        status = Hx::eXrefNotFound;
        error = L"file \"" + path + L"\" was not found beside the drawing or in the search folders";
        return nullptr;
    }
    const Chain chain = chainOf(host);
    if (std::find(chain.begin(), chain.end(), file) != chain.end()) {
        status = Hx::eXrefCircular;
        error = L"file \"" + path + L"\" refers back to itself";
        return nullptr;
    }
    constexpr long long kOwn = 8;
    constexpr long long kNested = 2;
    ProgressScope progress(L"Loading \"" + path.substr(path.find_last_of(L"/\\") + 1) + L"\"",
                           kOwn + kNested);
    progress.nextPart(kOwn);
    auto drawing = std::make_unique<HxDbDatabase>(false);
    status = drawing->readFile(file.toStdWString().c_str());
    if (status != Hx::eOk) {
        error = drawing->readError();
        error.erase(error.find_last_not_of(L'.') + 1);
        return nullptr;
    }
    drawing->imp()->xrefHost = &host;
    progress.step(kOwn);
    progress.nextPart(kNested);
    loadXrefs(*drawing, messages);
    if (progress.isCancelled()) {
        status = Hx::eCancelled;
        error = L"cancelled";
        return nullptr;
    }
    return drawing;
}

void loadXrefs(HxDbDatabase& host, std::vector<std::wstring>& messages) {
    const std::vector<HxDbStub*> blocks = members(*host.imp()->table(TableKind::block));
    ProgressScope progress(L"Loading external references", static_cast<long long>(blocks.size()));
    long long count = 0;
    for (HxDbStub* block : blocks) {
        if (!progress.step(count++)) {
            return;
        }
        progress.nextPart(1);
        if (!block->erased) {
            loadBlock(*block, messages);
        }
    }
}

void setXref(HxDbStub& blockRecord, std::unique_ptr<HxDbDatabase> drawing) {
    HxDbDatabase::Imp& db = *blockRecord.database->imp();
    std::unique_ptr<HxDbDatabase>& place = db.xrefs[&blockRecord];
    if (place) {
        db.formerXrefs.push_back(std::move(place));
    }
    place = std::move(drawing);
}

void addXrefLayers(HxDbStub& blockRecord, bool asRecords) {
    HxDbDatabase& host = *blockRecord.database;
    HxDbDatabase::Imp& db = *host.imp();
    HxDbDatabase* drawing = xrefDatabase(blockRecord);
    HxDbStub& table = *db.table(TableKind::layer);
    for (HxDbStub* layer :
         drawing ? members(*drawing->imp()->table(TableKind::layer)) : std::vector<HxDbStub*>()) {
        if (layer->erased || recordName(*layer) == L"0" || hostLayer(blockRecord, *layer)) {
            continue;
        }
        const auto& imp = fields<LayerImp>(materialise(*layer));
        const std::wstring name = recordName(blockRecord) + L"|" + imp.name;
        asRecords ? addRecord(host, table, name, imp) : addImplied(db, table, name, imp);
    }
}

}  // namespace korvex
