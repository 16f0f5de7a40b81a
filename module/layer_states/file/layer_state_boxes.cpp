// The texts of the boxes, and which buttons they have.
#include "layer_states/file/layer_state_boxes.h"

#include "frame/util/format_message.h"
#include "frame/util/resource_text.h"

#include "hxdialog.h"

namespace {

QString listed(const LayerStateQuestions::Names& names) {
    QStringList all;
    for (const CStdStr<wchar_t>& name : names) {
        all << QString::fromStdWString(name);
    }
    return listedNames(all);
}

QString formatted(int id, const CStdStr<wchar_t>& name) {
    CStdStr<wchar_t> text;
    text.Format(moduleString(id).c_str(), name.c_str());
    return QString::fromStdWString(text);
}

QString reasonOf(const KvLasFailure& failure) {
    const QStringList values = {QString::number(failure.line), QString::fromStdWString(failure.text)};
    switch (failure.kind) {
    case KvLasFailure::tooLarge: return resourceText(kStrLasTooLarge);
    case KvLasFailure::nullCharacter: return formatMessage(resourceText(kStrLasNullCharacter), values);
    case KvLasFailure::endsEarly: return formatMessage(resourceText(kStrLasEndsEarly), values);
    case KvLasFailure::otherLine: return formatMessage(resourceText(kStrLasOtherLine), values);
    case KvLasFailure::noName: return formatMessage(resourceText(kStrLasNoName), values);
    case KvLasFailure::cannotRead:
    case KvLasFailure::none: break;
    }
    return values[1];
}

}  // namespace

int KvLayerStateBoxes::show(const QString& text, unsigned type) const {
    return hxuiMessageBox(m_parent, text.toStdWString().c_str(), nullptr, type);
}

LayerStateQuestions::Overwrite KvLayerStateBoxes::mayOverwrite(const Names& states) {
    if (states.size() == 1) {
        const int answer = show(formatted(kStrOverwriteState, states.front()), MB_YESNO | MB_ICONWARNING);
        return answer == IDYES ? Overwrite::yes : Overwrite::no;
    }
    const QStringList values = {QString::number(states.size()), listed(states)};
    switch (show(formatMessage(resourceText(kStrOverwriteStates), values), MB_YESNOCANCEL | MB_ICONWARNING)) {
    case IDYES: return Overwrite::yes;
    case IDNO: return Overwrite::no;
    default: return Overwrite::cancel;
    }
}

bool KvLayerStateBoxes::mayRestore(const CStdStr<wchar_t>& state) {
    return show(formatted(kStrRestoreImported, state), MB_YESNO | MB_ICONQUESTION) == IDYES;
}

void KvLayerStateBoxes::tellMissingLinetypes(const Names& linetypes) {
    show(formatMessage(resourceText(kStrMissingLinetypes), {listed(linetypes)}), MB_OK | MB_ICONWARNING);
}

void KvLayerStateBoxes::tellUnusablePlotStyles(const Names& plotStyles) {
    show(formatMessage(resourceText(kStrUnusablePlotStyles), {listed(plotStyles)}), MB_OK | MB_ICONWARNING);
}

void KvLayerStateBoxes::tellPlotStylesLeftOut(const Names& plotStyles) {
    show(formatMessage(resourceText(kStrPlotStylesLeftOut), {listed(plotStyles)}), MB_OK | MB_ICONWARNING);
}

void KvLayerStateBoxes::tellChangedNames(const Names& names) {
    const QStringList values = {QString::number(names.size()), listed(names)};
    show(formatMessage(resourceText(kStrNamesChange), values), MB_OK | MB_ICONWARNING);
}

void KvLayerStateBoxes::tellNotImported(const CStdStr<wchar_t>& path, const KvLasFailure& failure) {
    const QStringList values = {QString::fromStdWString(path), reasonOf(failure)};
    show(formatMessage(resourceText(kStrStateNotImported), values), MB_OK | MB_ICONWARNING);
}

void KvLayerStateBoxes::tellNotExported(const CStdStr<wchar_t>& path, const CStdStr<wchar_t>& reason) {
    const QStringList values = {QString::fromStdWString(path), QString::fromStdWString(reason)};
    show(formatMessage(resourceText(kStrStateNotExported), values), MB_OK | MB_ICONWARNING);
}

void KvLayerStateBoxes::tellBrokenName(const CStdStr<wchar_t>& name) {
    const QString text = QString::fromStdWString(name).simplified();
    show(formatMessage(resourceText(kStrBrokenName), {text}), MB_OK | MB_ICONWARNING);
}

void KvLayerStateBoxes::tellNoStates(const CStdStr<wchar_t>& path, const CStdStr<wchar_t>& reason) {
    const QString why =
        reason.empty() ? resourceText(kStrDrawingHasNoStates) : QString::fromStdWString(reason);
    show(formatMessage(resourceText(kStrNoStates), {QString::fromStdWString(path), why}),
         MB_OK | MB_ICONINFORMATION);
}
