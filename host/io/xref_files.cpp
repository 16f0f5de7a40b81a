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

#include <map>
#include <set>

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

/// By canonical path.
using Drawings = std::map<QString, std::shared_ptr<HxDbDatabase>>;

QString findFile(const HxDbDatabase& host, const std::wstring& path) {
    for (const QString& candidate : candidates(host, path)) {
        if (QFileInfo(candidate).isFile()) {
            return QFileInfo(candidate).canonicalFilePath();
        }
    }
    return {};
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

/// Adds the layers that the block's drawing lacks; `left` of them at most as implied ones, null for records.
/// False when that is not enough.
bool addLayers(HxDbStub& blockRecord, std::size_t* left) {
    HxDbDatabase& host = *blockRecord.database;
    HxDbDatabase::Imp& db = *host.imp();
    HxDbDatabase* drawing = xrefDatabase(blockRecord);
    HxDbStub& table = *db.table(TableKind::layer);
    for (HxDbStub* layer :
         drawing ? members(*drawing->imp()->table(TableKind::layer)) : std::vector<HxDbStub*>()) {
        if (layer->erased || recordName(*layer) == L"0" || hostLayer(blockRecord, *layer)) {
            continue;
        }
        if (left && *left == 0) {
            return false;
        }
        const auto& imp = fields<LayerImp>(materialise(*layer));
        const std::wstring name = recordName(blockRecord) + L"|" + imp.name;
        if (left) {
            --*left;
            addImplied(db, table, name, imp);
        } else {
            addRecord(host, table, name, imp);
        }
    }
    return true;
}

/// Loads references for one drawing, each file once.
class XrefLoading {
public:
    XrefLoading(const HxDbDatabase& host, std::vector<std::wstring>& messages)
        : m_host(host), m_messages(messages) {
        m_chain.push_back(QFileInfo(QString::fromWCharArray(host.getFilename())).canonicalFilePath());
    }

    /// Shares what the drawing has loaded already.
    void share(const HxDbDatabase& host);
    void loadBlocks(HxDbDatabase& host);
    /// One that `host` names; null with the reason.
    std::shared_ptr<HxDbDatabase> load(const HxDbDatabase& host, const std::wstring& path,
                                       Hx::ErrorStatus& status, std::wstring& error);
    const Drawings& drawings() const { return m_drawings; }
    void listLayers(HxDbStub& block);

private:
    struct Failure {
        Hx::ErrorStatus status;
        std::wstring error;
    };

    void loadBlock(HxDbStub& block);
    Failure refusal(const QString& file, const std::wstring& path) const;
    std::shared_ptr<HxDbDatabase> read(const QString& file, const std::wstring& path, Failure& failure);

    const HxDbDatabase& m_host;
    std::vector<std::wstring>& m_messages;
    std::vector<QString> m_chain;  ///< files from the host down to the one whose references are being loaded
    Drawings m_drawings;
    std::map<QString, Failure> m_failures;  ///< of reading
    long long m_bytes = 0;                  ///< of the files
    std::size_t m_layersLeft = kMostXrefLayers;
};

void XrefLoading::share(const HxDbDatabase& host) {
    for (const auto& [block, drawing] : host.imp()->xrefs) {
        const bool isUsed = drawing && !block->erased;
        if (isUsed && m_drawings.emplace(QString::fromWCharArray(drawing->getFilename()), drawing).second) {
            m_bytes += static_cast<long long>(drawing->imp()->file.size());
            share(*drawing);
        }
    }
}

void XrefLoading::loadBlocks(HxDbDatabase& host) {
    const std::vector<HxDbStub*> blocks = members(*host.imp()->table(TableKind::block));
    ProgressScope progress(L"Loading external references", static_cast<long long>(blocks.size()));
    long long count = 0;
    for (HxDbStub* block : blocks) {
        if (!progress.step(count++)) {
            return;
        }
        progress.nextPart(1);
        if (!block->erased) {
            loadBlock(*block);
        }
    }
}

void XrefLoading::loadBlock(HxDbStub& block) {
    const auto* record = HxDbBlockTableRecord::cast(materialise(block));
    const bool isNested = block.database != &m_host;
    if (!record || !record->isFromExternalReference() || record->isDependent() ||
        (isNested && record->isFromOverlayReference())) {
        return;
    }
    Hx::ErrorStatus status = Hx::eOk;
    std::wstring error;
    std::shared_ptr<HxDbDatabase> drawing = load(*block.database, record->pathName(), status, error);
    if (!drawing) {
        m_messages.push_back(L"External reference \"" + recordName(block) + L"\" is not loaded: " + error +
                             L".");
        return;
    }
    setXref(block, std::move(drawing));
    listLayers(block);
}

void XrefLoading::listLayers(HxDbStub& block) {
    const bool wasEnough = m_layersLeft > 0;
    if (!addLayers(block, &m_layersLeft) && wasEnough) {
        m_messages.push_back(L"External reference \"" + recordName(block) +
                             L"\": not all of its layers are listed, since the references have more than " +
                             std::to_wstring(kMostXrefLayers) + L" in all.");
    }
}

/// Why a file that is there is not even looked into; eOk when nothing is against it.
XrefLoading::Failure XrefLoading::refusal(const QString& file, const std::wstring& path) const {
    if (m_chain.size() > kMostXrefLevels) {
        return {Hx::eRefused,
                L"references go deeper than " + std::to_wstring(kMostXrefLevels) + L" levels here"};
    }
    if (m_bytes + QFileInfo(file).size() > kMostXrefBytes) {
        return {Hx::eRefused, L"with file \"" + path + L"\" the references would take more than " +
                                  std::to_wstring(kMostXrefBytes >> 20U) + L" MB"};
    }
    return {Hx::eOk, {}};
}

std::shared_ptr<HxDbDatabase> XrefLoading::load(const HxDbDatabase& host, const std::wstring& path,
                                                Hx::ErrorStatus& status, std::wstring& error) {
    const QString file = findFile(host, path);
    Failure failure{Hx::eOk, {}};
    std::shared_ptr<HxDbDatabase> drawing;
    if (file.isEmpty()) {
        failure = {Hx::eXrefNotFound,
                   L"file \"" + path + L"\" was not found beside the drawing or in the search folders"};
    } else if (std::find(m_chain.begin(), m_chain.end(), file) != m_chain.end()) {
        failure = {Hx::eXrefCircular, L"file \"" + path + L"\" refers back to itself"};
    } else if (const auto known = m_drawings.find(file); known != m_drawings.end()) {
        drawing = known->second;
    } else if (const auto failed = m_failures.find(file); failed != m_failures.end()) {
        failure = failed->second;
    } else {
        failure = refusal(file, path);
        drawing = failure.status == Hx::eOk ? read(file, path, failure) : nullptr;
    }
    status = failure.status;
    error = failure.error;
    return drawing;
}

/// The file with what it refers to.
std::shared_ptr<HxDbDatabase> XrefLoading::read(const QString& file, const std::wstring& path,
                                                Failure& failure) {
    constexpr long long kOwn = 8;
    constexpr long long kNested = 2;
    ProgressScope progress(L"Loading \"" + path.substr(path.find_last_of(L"/\\") + 1) + L"\"",
                           kOwn + kNested);
    progress.nextPart(kOwn);
    auto drawing = std::make_shared<HxDbDatabase>(false);
    failure.status = drawing->readDwgFile(file.toStdWString().c_str());
    if (failure.status != Hx::eOk) {
        failure.error = drawing->readError();
        failure.error.erase(failure.error.find_last_not_of(L'.') + 1);
        m_failures[file] = failure;
        return nullptr;
    }
    m_bytes += static_cast<long long>(drawing->imp()->file.size());
    progress.step(kOwn);
    progress.nextPart(kNested);
    m_chain.push_back(file);
    loadBlocks(*drawing);
    m_chain.pop_back();
    if (progress.isCancelled()) {
        failure = {Hx::eCancelled, L"cancelled"};
        return nullptr;
    }
    m_drawings[file] = drawing;
    return drawing;
}

/// The blocks of a drawing and of its references that have an older drawing of one of the files.
void findOutdated(const HxDbDatabase& host, const Drawings& fresh, std::set<const HxDbDatabase*>& seen,
                  std::vector<HxDbStub*>& blocks) {
    for (const auto& [block, drawing] : host.imp()->xrefs) {
        if (!drawing) {
            continue;
        }
        if (fresh.count(QString::fromWCharArray(drawing->getFilename())) != 0) {
            blocks.push_back(block);
        } else if (seen.insert(drawing.get()).second) {
            findOutdated(*drawing, fresh, seen, blocks);
        }
    }
}

}  // namespace

std::shared_ptr<HxDbDatabase> loadXref(HxDbDatabase& host, const std::wstring& path, Hx::ErrorStatus& status,
                                       std::wstring& error, std::vector<std::wstring>& messages) {
    XrefLoading loading(host, messages);
    loading.share(host);
    return loading.load(host, path, status, error);
}

void loadXrefs(HxDbDatabase& host, std::vector<std::wstring>& messages) {
    XrefLoading(host, messages).loadBlocks(host);
}

bool reloadXrefFile(HxDbStub& blockRecord, const std::wstring& path, Hx::ErrorStatus& status,
                    std::wstring& error, std::vector<std::wstring>& messages) {
    HxDbDatabase& host = *blockRecord.database;
    std::vector<std::shared_ptr<HxDbDatabase>>& former = host.imp()->formerXrefs;
    former.clear();
    XrefLoading loading(host, messages);
    std::shared_ptr<HxDbDatabase> drawing = loading.load(host, path, status, error);
    if (!drawing) {
        return false;
    }
    std::vector<HxDbStub*> blocks;
    std::set<const HxDbDatabase*> seen;
    findOutdated(host, loading.drawings(), seen, blocks);
    for (HxDbStub* block : blocks) {
        std::shared_ptr<HxDbDatabase>& place = block->database->imp()->xrefs[block];
        former.push_back(place);
        place = loading.drawings().at(QString::fromWCharArray(place->getFilename()));
    }
    if (xrefDatabase(blockRecord) != drawing.get()) {
        setXref(blockRecord, std::move(drawing));
        blocks.push_back(&blockRecord);
    }
    for (HxDbStub* block : blocks) {
        if (block->database != &host) {
            loading.listLayers(*block);
        } else if (!block->erased) {
            addXrefLayers(*block);
        }
    }
    return true;
}

void setXref(HxDbStub& blockRecord, std::shared_ptr<HxDbDatabase> drawing) {
    HxDbDatabase::Imp& db = *blockRecord.database->imp();
    std::shared_ptr<HxDbDatabase>& place = db.xrefs[&blockRecord];
    if (place) {
        db.formerXrefs.push_back(std::move(place));
    }
    place = std::move(drawing);
}

void addXrefLayers(HxDbStub& blockRecord) { addLayers(blockRecord, nullptr); }

}  // namespace korvex
