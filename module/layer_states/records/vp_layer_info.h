// What overrides a layer in the current viewport of a layout.
#pragma once

#include "hxdbsymtb.h"

/// A layer's values in a viewport: its overrides there, its own values where it has none.
class CKvVpLayerInfo {
public:
    CKvVpLayerInfo() = default;
    /// Of the current viewport of the record's drawing.
    explicit CKvVpLayerInfo(HxDbLayerTableRecord* layer) { initVpLayerInfo(layer); }
    virtual ~CKvVpLayerInfo() = default;

    /// Null leaves everything as it is.
    void initVpLayerInfo(HxDbLayerTableRecord* layer);

    const HxCmColor& GetVpLayerColor() const { return m_color; }
    const CStdStr<wchar_t>& GetVpLayerLineTypeName() const { return m_linetype; }
    int GetVpLayerLineWeight() const { return m_lineweight; }
    const CStdStr<wchar_t>& GetVpLayerPlotStyleName() const { return m_plotStyle; }
    const HxCmTransparency& GetVpLayerTransparency() const { return m_transparency; }

private:
    HxCmColor m_color;
    CStdStr<wchar_t> m_linetype;
    int m_lineweight = HxDb::kLnWtByLwDefault;
    CStdStr<wchar_t> m_plotStyle;
    HxCmTransparency m_transparency;
};
