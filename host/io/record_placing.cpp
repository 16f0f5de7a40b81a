// Puts blocks and entities where they belong.
#include "host/io/record_placing.h"

#include "host/db/kernel/text_fold.h"

namespace korvex {

namespace {

constexpr std::wstring_view kModelSpace = L"*Model_Space";
constexpr std::wstring_view kPaperSpace = L"*Paper_Space";

/// Names that drawings before R13 have for the spaces' blocks.
std::wstring_view presentName(std::wstring_view name) {
    if (equalNames(name, L"$MODEL_SPACE")) {
        return kModelSpace;
    }
    return equalNames(name, L"$PAPER_SPACE") ? kPaperSpace : name;
}

void addMember(HxDbStub& container, HxDbStub& stub) {
    std::vector<HxDbStub*>& members = container.contents->members;
    if (!stub.subEntity) {
        stub.owner = &container;
    }
    stub.position = static_cast<std::uint32_t>(members.size());
    members.push_back(&stub);
}

}  // namespace

RecordPlacing::RecordPlacing(HxDbDatabase& database, UnplacedRecords& records, ImpliedRecords& implied)
    : m_db(*database.imp()), m_records(records), m_implied(implied) {}

void RecordPlacing::run() {
    gatherNames();
    for (BlockRun& block : m_records.blocks) {
        placeBlock(block);
    }
    findSpaces();
    HxDbStub* container = m_model;
    for (const LooseEntity& entity : m_records.entities) {
        if (!entity.stub->subEntity) {
            container = &containerOf(entity);
        }
        addMember(*container, *entity.stub);
    }
}

void RecordPlacing::gatherNames() {
    const std::vector<HxDbStub*>& records = m_db.table(TableKind::block)->contents->members;
    const RecordNames& names = m_records.names[static_cast<std::size_t>(TableKind::block)];
    for (std::size_t i = 0; i < records.size(); ++i) {
        m_byName.emplace(foldName(m_db.format.codec->decode(names[i])), records[i]);
    }
}

void RecordPlacing::placeBlock(BlockRun& block) {
    HxDbStub& record = recordOf(block);
    record.contents->blockBegin = block.begin;
    record.contents->blockEnd = block.end;
    block.begin->owner = block.end->owner = &record;
    m_db.layout[block.endPlace].stub = &record;
    for (HxDbStub* entity : block.entities) {
        addMember(record, *entity);
    }
}

/// By the owner that the BLOCK names, by its name, or else made for it.
HxDbStub& RecordPlacing::recordOf(const BlockRun& block) {
    constexpr int kHandleCode = 5;
    const RecordHead head = recordHead(block.begin->blob.groups(), m_db.format, kHandleCode, HeadPart::name);
    HxDbStub* owner = blockRecord(head.owner);
    if (owner && !owner->contents->blockBegin) {
        return *owner;
    }
    const std::wstring text = m_db.format.codec->decode(head.name);
    const std::wstring_view name = presentName(text);
    const auto named = m_byName.equal_range(foldName(name));
    for (auto it = named.first; it != named.second; ++it) {
        if (!it->second->contents->blockBegin) {
            return *it->second;
        }
    }
    return addBlock(name);
}

HxDbStub& RecordPlacing::addBlock(std::wstring_view name) {
    HxDbStub& record = m_implied.addBlock(name);
    m_byName.emplace(foldName(name), &record);
    return record;
}

/// The block record of a handle; null when that is another object's.
HxDbStub* RecordPlacing::blockRecord(std::uint64_t handle) const {
    HxDbStub* stub = handle != 0 ? m_db.handles.find(handle) : nullptr;
    return stub && stub->owner == m_db.table(TableKind::block) ? stub : nullptr;
}

HxDbStub* RecordPlacing::space(std::wstring_view name) const {
    const auto found = m_byName.find(foldName(name));
    return found != m_byName.end() ? found->second : nullptr;
}

/// Some programs lose the name of model space: it is the block without contents of its own that owns entities
/// which are not in one. Null when there is none.
HxDbStub* RecordPlacing::misnamedModel() const {
    for (const LooseEntity& entity : m_records.entities) {
        HxDbStub* owner = entity.onPaper ? nullptr : blockRecord(entity.owner);
        if (owner && owner->contents->members.empty() && owner != space(kPaperSpace)) {
            return owner;
        }
    }
    return nullptr;
}

/// Model space, which every drawing has, and paper space, which came with R11.
void RecordPlacing::findSpaces() {
    m_model = space(kModelSpace);
    if (!m_model) {
        m_model = m_db.misnamedModel = misnamedModel();
    }
    if (!m_model) {
        m_model = &addBlock(kModelSpace);
    }
    bool needsPaper = m_db.version == "AC1009" || m_db.traits().hasSubclassMarkers;
    for (const LooseEntity& entity : m_records.entities) {
        needsPaper = needsPaper || entity.onPaper;
    }
    m_paper = space(kPaperSpace);
    if (!m_paper && needsPaper) {
        m_paper = &addBlock(kPaperSpace);
    }
    for (const auto& [name, record] : m_byName) {
        if (name.rfind(foldName(kPaperSpace), 0) == 0) {
            m_spaces.insert(record);
        }
    }
    m_spaces.insert(m_model);
    m_model->contents->inEntities = true;
    if (m_paper) {
        m_paper->contents->inEntities = true;
    }
}

/// The space that it names as its owner, unless the flag tells that it cannot be. Another block cannot be
/// either: some programs give model space a name of their own.
HxDbStub& RecordPlacing::containerOf(const LooseEntity& entity) const {
    HxDbStub* owner = blockRecord(entity.owner);
    if (owner && m_spaces.count(owner) > 0 && !(entity.onPaper && owner == m_model)) {
        return *owner;
    }
    return entity.onPaper ? *m_paper : *m_model;
}

}  // namespace korvex
