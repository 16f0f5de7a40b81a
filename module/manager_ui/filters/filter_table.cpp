// Filter expressions as a table of conditions.
#include "filter_table.h"

#include <QRegularExpression>

namespace {

/// Reads an expression into alternatives; gives up at the first thing that a table has no place for.
class TableReader {
public:
    explicit TableReader(const QString& expression) {
        static const QRegularExpression token(R"(\(|\)|==|[!<>]=?|"[^"]*"?|[^\s()=!<>"]+|=)");
        for (QRegularExpressionMatchIterator at = token.globalMatch(expression); at.hasNext();) {
            m_tokens << at.next().captured();
        }
    }

    bool read(KvFilterTable& table) { return alternatives(table) && m_at == m_tokens.size(); }

private:
    bool isNext(const char* word) const {
        return m_at < m_tokens.size() &&
               m_tokens[m_at].compare(QLatin1String(word), Qt::CaseInsensitive) == 0;
    }
    bool take(const char* word) {
        const bool isIt = isNext(word);
        m_at += isIt ? 1 : 0;
        return isIt;
    }
    bool alternatives(KvFilterTable& table) {
        do {
            KvFilterTable some;
            if (!conditions(some)) return false;
            table.insert(table.end(), some.begin(), some.end());
        } while (take("OR"));
        return true;
    }
    /// Several alternatives in parentheses cannot be joined with anything.
    bool conditions(KvFilterTable& table) {
        if (!condition(table)) return false;
        while (take("AND")) {
            KvFilterTable next;
            if (!condition(next) || table.size() != 1 || next.size() != 1) return false;
            if (!merge(table.front(), next.front())) return false;
        }
        return true;
    }
    static bool merge(KvFilterRow& row, const KvFilterRow& other) {
        for (int i = 0; i < row.size(); ++i) {
            if (!row[i].isEmpty() && !other[i].isEmpty()) return false;
            if (row[i].isEmpty()) row[i] = other[i];
        }
        return true;
    }
    bool condition(KvFilterTable& table) {
        if (take("(")) {
            const bool isRead = ++m_depth <= kDeepest && alternatives(table) && take(")");
            --m_depth;
            return isRead;
        }
        if (m_at + 2 >= m_tokens.size()) return false;
        const int column = columnOf(m_tokens[m_at]);
        if (column < 0 || m_tokens[m_at + 1] != "==") return false;
        const QString value = valueOf(column, m_tokens[m_at + 2]);
        if (value.isEmpty()) return false;
        m_at += 3;
        KvFilterRow row;
        for (std::size_t i = 0; i < filterProperties().size(); ++i) {
            row << QString();
        }
        row[column] = value;
        table.push_back(row);
        return true;
    }
    static int columnOf(const QString& name) {
        const std::vector<KvFilterProperty>& all = filterProperties();
        for (std::size_t i = 0; i < all.size(); ++i) {
            if (name.compare(QLatin1String(all[i].name), Qt::CaseInsensitive) == 0)
                return static_cast<int>(i);
        }
        return name.compare(QLatin1String("PLOT"), Qt::CaseInsensitive) == 0 ? columnOf("PLOTTABLE") : -1;
    }
    /// As the table spells it; empty for none, for a quote that is not closed and a value that does not
    /// exist.
    static QString valueOf(int column, const QString& token) {
        QString value = token;
        if (value.startsWith('"')) {
            if (value.size() < 2 || !value.endsWith('"')) return {};
            value = value.mid(1, value.size() - 2);
        }
        const std::vector<const char*>& known = filterProperties()[static_cast<std::size_t>(column)].values;
        for (const char* const each : known) {
            if (value.compare(QLatin1String(each), Qt::CaseInsensitive) == 0) return each;
        }
        return known.empty() ? value : QString();
    }

    static constexpr int kDeepest = 50;

    QStringList m_tokens;
    int m_at = 0;
    int m_depth = 0;  ///< of parentheses
};

}  // namespace

const std::vector<KvFilterProperty>& filterProperties() {
    static const std::vector<const char*> kTruth = {"True", "False"};
    static const std::vector<KvFilterProperty> all = {
        {"NAME", kStrHeaderName, {}, {}},
        {"STATUS",
         kStrHeaderStatus,
         {"Current", "Used", "Unused"},
         {kStrStateCurrent, kStrStateUsed, kStrStateUnused}},
        {"ON", kStrHeaderOn, kTruth, {kStrStateOn, kStrStateOff}},
        {"FROZEN", kStrHeaderFreeze, kTruth, {kStrStateFrozen, kStrStateThawed}},
        {"LOCKED", kStrHeaderLock, kTruth, {kStrStateLocked, kStrStateUnlocked}},
        {"COLOR", kStrHeaderColor, {}, {}},
        {"LINETYPE", kStrHeaderLinetype, {}, {}},
        {"LINEWEIGHT", kStrHeaderLineweight, {}, {}},
        {"TRANSPARENCY", kStrHeaderTransparency, {}, {}},
        {"PLOTSTYLE", kStrHeaderPlotStyle, {}, {}},
        {"PLOTTABLE", kStrHeaderPlot, kTruth, {kStrStatePlots, kStrStateNoPlot}},
        {"NEWVPFROZEN", kStrHeaderNewVpFreeze, kTruth, {kStrStateVpFrozen, kStrStateVpThawed}},
        {"DESCRIPTION", kStrHeaderDescription, {}, {}},
    };
    return all;
}

QString expressionOf(const KvFilterTable& table) {
    QStringList alternatives;
    const std::vector<KvFilterProperty>& properties = filterProperties();
    for (const KvFilterRow& row : table) {
        QStringList conditions;
        for (int i = 0; i < row.size(); ++i) {
            const QString value = QString(row[i]).remove('"');
            if (value.isEmpty()) continue;
            conditions << QString("%1==\"%2\"").arg(properties[static_cast<std::size_t>(i)].name, value);
        }
        if (!conditions.isEmpty()) alternatives << conditions.join(" AND ");
    }
    return alternatives.join(" OR ");
}

bool tableOf(const QString& expression, KvFilterTable& table) {
    table.clear();
    return expression.trimmed().isEmpty() || TableReader(expression).read(table);
}
