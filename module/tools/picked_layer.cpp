// Which layer is meant by a pick.
#include "picked_layer.h"

#include "frame/util/result_buffers.h"
#include "freeze_options.h"

#include <memory>

namespace {

constexpr int kBlockNameCode = 2;
constexpr int kLayerCode = 8;
constexpr std::size_t kMaxLayerName = 255;
constexpr wchar_t kLayerZero[] = L"0";

using Name = CStdStr<wchar_t>;

/// A block definition as the block table has it.
struct Block {
    bool exists = false;
    bool isXref = false;
    Name name;
};

Name entityText(const zds_name entity, int code) {
    wchar_t buffer[kNameBufferSize] = {};
    GetEntString(entity, code, buffer, kNameBufferSize);
    return buffer;
}

Name layerOf(const zds_name entity) { return entityText(entity, kLayerCode); }

Block blockOf(const zds_name reference) {
    const Name name = entityText(reference, kBlockNameCode);
    const ListPtr list(hxdbTblSearch(L"BLOCK", name.c_str(), 0));
    wchar_t buffer[kNameBufferSize] = {};
    GetBufString(list.get(), kBlockNameCode, buffer, kNameBufferSize);
    return {list != nullptr, isXrefBlock(list.get()), buffer};
}

Name qualified(const Block& block, const Name& layer) {
    if (!block.isXref || layer == kLayerZero || layer.find(L'|') != Name::npos) return layer;
    return (block.name + L"|" + layer).substr(0, kMaxLayerName);
}

Name outermostLayer(const zds_name picked, const resbuf* containers) {
    zds_name top = {0, 0};
    return layerOf(GetTopBlkNameInBuf(containers, top) == RTNORM ? top : picked);
}

Name innermostLayer(const zds_name picked, const resbuf* containers) {
    zds_name inner = {0, 0};
    if (GetFirstNameInBuf(containers, inner) != RTNORM) return layerOf(picked);
    const Block block = blockOf(inner);
    if (block.exists) return block.isXref ? qualified(block, layerOf(picked)) : layerOf(inner);
    // A block of an external reference's own drawing.
    zds_name reference = {0, 0};
    if (GetBufFirstAndRefNames(containers, inner, reference) != RTNORM) return layerOf(picked);
    return qualified(blockOf(reference), layerOf(inner));
}

Name objectLayer(const zds_name picked, const resbuf* containers) {
    zds_name inner = {0, 0};
    if (GetFirstNameInBuf(containers, inner) != RTNORM) return layerOf(picked);
    Block block = blockOf(inner);
    zds_name reference = {0, 0};
    if (!block.exists && GetBufFirstAndRefNames(containers, inner, reference) == RTNORM) {
        block = blockOf(reference);
    }
    return qualified(block, layerOf(picked));
}

}  // namespace

CStdStr<wchar_t> layerOfPick(const zds_name picked, const resbuf* containers, int nesting) {
    switch (nesting) {
    case FreezeOptions::kInnermost: return innermostLayer(picked, containers);
    case FreezeOptions::kObject: return objectLayer(picked, containers);
    default: return outermostLayer(picked, containers);
    }
}
