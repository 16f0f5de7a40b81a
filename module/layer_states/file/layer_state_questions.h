// What working with layer states asks the user and tells them.
#pragma once

#include "layer_states/file/las_reader.h"

#include <vector>

/// Dialogs answer by message boxes (KvLayerStateBoxes), tests as they like.
class LayerStateQuestions {
public:
    using Names = std::vector<CStdStr<wchar_t>>;
    enum class Overwrite {
        yes,
        no,     ///< those stay as they are
        cancel  ///< and nothing else is done either
    };

    virtual ~LayerStateQuestions() = default;

    /// There are states of these names already; one name at least.
    virtual Overwrite mayOverwrite(const Names& states) = 0;
    /// Restore the state that was just imported?
    virtual bool mayRestore(const CStdStr<wchar_t>& state) = 0;

    /// "Continuous" stands in for these linetypes, which the drawing lacks.
    virtual void tellMissingLinetypes(const Names& linetypes) = 0;
    /// The drawing cannot use these plot styles of a layer-state file.
    virtual void tellUnusablePlotStyles(const Names& plotStyles) = 0;
    /// The same, of another drawing's states.
    virtual void tellPlotStylesLeftOut(const Names& plotStyles) = 0;
    /// The file was written, but reading it will not give these names back as they are.
    virtual void tellChangedNames(const Names& names) = 0;

    virtual void tellNotImported(const CStdStr<wchar_t>& path, const KvLasFailure& failure) = 0;
    /// No file was written: `reason` is the system's.
    virtual void tellNotExported(const CStdStr<wchar_t>& path, const CStdStr<wchar_t>& reason) = 0;
    /// No file was written: the name holds a line break.
    virtual void tellBrokenName(const CStdStr<wchar_t>& name) = 0;
    /// A drawing has no states, or could not be read: `reason`, empty when it was.
    virtual void tellNoStates(const CStdStr<wchar_t>& path, const CStdStr<wchar_t>& reason) = 0;
};
