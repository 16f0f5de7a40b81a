// Who may include whom: the module sees sdk/ and Qt only; each floor of the host sees those below it; sdk/
// sees itself.
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>

#include <gtest/gtest.h>
#include <vector>

namespace {

struct Include {
    QString file;  ///< from the source folder
    QString name;
    bool isQuoted;
};

std::vector<Include> includesBelow(const QString& folder) {
    static const QRegularExpression line("^\\s*#\\s*include\\s*([<\"])([^>\"]+)[>\"]",
                                         QRegularExpression::MultilineOption);
    const QDir root(KORVEX_SOURCE_DIR);
    std::vector<Include> all;
    QDirIterator files(root.filePath(folder), {"*.h", "*.cpp"}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        auto matches = line.globalMatch(QString::fromUtf8(file.readAll()));
        while (matches.hasNext()) {
            const QRegularExpressionMatch match = matches.next();
            all.push_back(
                {root.relativeFilePath(file.fileName()), match.captured(2), match.captured(1) == "\""});
        }
    }
    return all;
}

bool exists(const QString& path) { return QFile::exists(QString(KORVEX_SOURCE_DIR "/") + path); }

/// The host's floors, the lowest first.
const std::vector<QString> kFloors = {"base", "db", "io", "editor", "ui", "app"};

TEST(IncludeDirections, TheModuleSeesTheSdkAndQt) {
    const std::vector<Include> includes = includesBelow("module");
    ASSERT_GT(includes.size(), 50U);
    for (const Include& include : includes) {
        if (!include.isQuoted) {
            const bool isHosts = include.name.contains("host") || include.name.contains("sqlite") ||
                                 include.name.contains("boost");
            EXPECT_FALSE(isHosts) << include.file.toStdString() << " includes " << include.name.toStdString();
            continue;
        }
        const QString beside = include.file.section('/', 0, -2) + "/" + include.name;
        EXPECT_TRUE(exists("sdk/" + include.name) || exists("module/" + include.name) ||
                    (exists(beside) && !include.name.contains("..")))
            << include.file.toStdString() << " includes " << include.name.toStdString();
    }
}

TEST(IncludeDirections, TheSdkSeesItself) {
    const std::vector<Include> includes = includesBelow("sdk");
    ASSERT_GT(includes.size(), 20U);
    for (const Include& include : includes) {
        EXPECT_TRUE(!include.isQuoted || exists("sdk/" + include.name))
            << include.file.toStdString() << " includes " << include.name.toStdString();
    }
}

TEST(IncludeDirections, FloorsSeeThoseBelow) {
    for (std::size_t floor = 0; floor < kFloors.size(); ++floor) {
        for (const Include& include : includesBelow("host/" + kFloors[floor])) {
            const QString name = include.name;
            if (!name.startsWith("host/") && !name.startsWith("module/")) {
                continue;
            }
            const auto wanted = std::find(kFloors.begin(), kFloors.end(), name.section('/', 1, 1));
            EXPECT_TRUE(name.startsWith("host/") && wanted != kFloors.end() &&
                        static_cast<std::size_t>(wanted - kFloors.begin()) <= floor)
                << include.file.toStdString() << " includes " << name.toStdString();
        }
    }
}

TEST(IncludeDirections, UtilitiesOfTheModuleKnowNobodyWhoUsesThem) {
    const std::vector<Include> includes = includesBelow("module/frame/util");
    ASSERT_GT(includes.size(), 20U);
    for (const Include& include : includes) {
        const bool isOfModule = include.isQuoted && include.name.contains('/');
        EXPECT_TRUE(!isOfModule || include.name.startsWith("frame/util/") ||
                    include.name.startsWith("resources/"))
            << include.file.toStdString() << " includes " << include.name.toStdString();
    }
}

/// The rooms of the layer states, the lowest first; those beside each other know nothing of each other.
const std::vector<QStringList> kStateRooms = {{"records"},         {"storage", "capture"},
                                              {"file", "restore"}, {"edit", "choose", "save", "preview"},
                                              {"compare"},         {"manager"},
                                              {"commands"}};

TEST(IncludeDirections, RoomsOfTheLayerStatesLookDown) {
    const QString house = "layer_states/";
    std::size_t seen = 0;
    for (std::size_t floor = 0; floor < kStateRooms.size(); ++floor) {
        for (const QString& room : kStateRooms[floor]) {
            for (const Include& include : includesBelow("module/" + house + room)) {
                const QString name = include.name;
                EXPECT_FALSE(name.startsWith("manager_ui/") && !name.startsWith("manager_ui/cells/") &&
                             floor < 3)
                    << include.file.toStdString() << " includes " << name.toStdString();
                if (!name.startsWith(house)) {
                    continue;
                }
                ++seen;
                const QString other = name.section('/', 1, 1);
                const auto isBelow = [&](const QStringList& rooms) { return rooms.contains(other); };
                const auto end = kStateRooms.begin() + static_cast<std::ptrdiff_t>(floor);
                EXPECT_TRUE(other == room || std::any_of(kStateRooms.begin(), end, isBelow))
                    << include.file.toStdString() << " includes " << name.toStdString();
            }
        }
    }
    EXPECT_GT(seen, 30U);
}

}  // namespace
