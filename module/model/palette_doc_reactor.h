// Follows the open documents for the layer palette.
#pragma once

#include "layer_doc_context.h"

#include <map>
#include <memory>

/// The order of a layer dialog's rows.
struct KvLayerSortInfo {
    int column = 1;  ///< by display position
    bool descending = false;
};

/// What the user looks at in the palette: the filter's name (empty: never looked) and what is searched for.
struct KvLayerFilterInfo {
    CStdStr<wchar_t> filter;
    CStdStr<wchar_t> search;
};

/// Registered with the document manager from its making to its end. Keeps which documents are followed, and
/// how many commands run in each during which the palette refuses edits.
class KvLayerPaletteDocReactor : public HxApDocManagerReactor {
public:
    /// Follows the document that is current now; null for none.
    explicit KvLayerPaletteDocReactor(HxApDocument* current);
    ~KvLayerPaletteDocReactor() override;
    KvLayerPaletteDocReactor(const KvLayerPaletteDocReactor&) = delete;
    KvLayerPaletteDocReactor& operator=(const KvLayerPaletteDocReactor&) = delete;

    /// Follows a document unless it is followed; nothing without a database.
    void AppendLayerDocContext(HxApDocument* document);
    void RemoveLayerDocContext(HxApDocument* document);
    /// Null until the first document is followed.
    KvLayerDocContext* context() const { return m_context.get(); }

    void blockingCommandStarted(HxApDocument* document) { ++m_blockingCommands[document]; }
    /// Nothing for a document that was never counted.
    void blockingCommandEnded(HxApDocument* document);
    int blockingCommands(HxApDocument* document) const;

    /// By name, for a document whose order was never set.
    KvLayerSortInfo sortInfo(HxApDocument* document) const;
    void setSortInfo(HxApDocument* document, KvLayerSortInfo order) { m_orders[document] = order; }

    /// Empty for a document that the palette has never shown.
    KvLayerFilterInfo filterInfo(HxApDocument* document) const;
    void setFilterInfo(HxApDocument* document, const KvLayerFilterInfo& shown) {
        m_filters[document] = shown;
    }

    /// The layer state that was restored last in a document; empty when none was.
    CStdStr<wchar_t> restoredState(HxApDocument* document) const;
    void setRestoredState(HxApDocument* document, const CStdStr<wchar_t>& name) {
        m_restoredStates[document] = name;
    }

    void documentCreated(HxApDocument* document) override;
    void documentActivated(HxApDocument* document) override;
    void documentToBeDestroyed(HxApDocument* document) override;

private:
    std::map<HxApDocument*, int> m_blockingCommands;
    std::map<HxApDocument*, KvLayerSortInfo> m_orders;
    std::map<HxApDocument*, KvLayerFilterInfo> m_filters;
    std::map<HxApDocument*, CStdStr<wchar_t>> m_restoredStates;
    std::unique_ptr<KvLayerDocContext> m_context;
};
