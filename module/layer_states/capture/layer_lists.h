// The entity lists of a drawing's layers.
#pragma once

#include "hxads.h"

#include <map>

/// Lists by layer name, in the order of the names. A list is read when it is first asked for.
class KvLayerLists {
public:
    KvLayerLists() = default;
    ~KvLayerLists() { clear(); }
    KvLayerLists(const KvLayerLists&) = delete;
    KvLayerLists& operator=(const KvLayerLists&) = delete;

    /// Begins anew with all layers of the working database, which are looked up when they are first asked
    /// for; lists that were read are released.
    void fill();
    /// Takes a list over.
    void add(const CStdStr<wchar_t>& name, resbuf* list);
    /// Null when there is no such layer. Belongs to this object.
    resbuf* find(const CStdStr<wchar_t>& name);
    /// Layers were changed: lists are to be read again. Those that were given stay.
    void setAllStale();
    void clear();
    std::size_t size() {
        nameLayers();
        return m_lists.size();
    }
    /// Calls `visit` with the name and list of each layer whose list was read or given.
    template <class Visitor>
    void visitRead(Visitor&& visit) const {
        for (const auto& [name, list] : m_lists) {
            if (list.list) visit(name, list.list);
        }
    }
    /// Calls `visit` with the name of each layer.
    template <class Visitor>
    void visitNames(Visitor&& visit) {
        nameLayers();
        for (const auto& [name, list] : m_lists) {
            visit(name);
        }
    }

private:
    struct List {
        HxDbObjectId layer;  ///< null for a list that was given
        resbuf* list = nullptr;
    };
    void nameLayers();

    std::map<CStdStr<wchar_t>, List> m_lists;
    bool m_isToBeNamed = false;  ///< filled, but nobody has asked yet
};
