#include "layer_states/restore/restore_summary.h"

#include "frame/util/format_message.h"
#include "frame/util/resource_text.h"

QString restoreSummary(const KvRestoreResult& result) {
    if (result.refused.isEmpty()) return {};
    QStringList names;
    for (const CStdStr<wchar_t>& name : result.refused) {
        names << QString::fromStdWString(name);
    }
    return formatMessage(resourceText(kStrRestoreRefused),
                         {QString::number(names.size()), QString::number(result.layers), listedNames(names)});
}
