#include "support/HostileBytes.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <iterator>
#include <random>

namespace regalon::test {
namespace {

/// One small change of the kind that finds mistakes in lengths and signs.
void change(QByteArray& bytes, std::mt19937& random) {
    if (bytes.isEmpty())
        return;
    static constexpr char telling[] = {'\0', '\1', '\x7F', '\x80', '\xFF', ';', '=', '{', '}', '"', '\n'};
    const auto at = static_cast<qsizetype>(random() % static_cast<std::size_t>(bytes.size()));
    switch (random() % 5) {
        case 0:
            bytes[at] = static_cast<char>(random());
            break;
        case 1:
            bytes[at] = telling[random() % std::size(telling)];
            break;
        case 2:
            bytes.insert(at, telling[random() % std::size(telling)]);
            break;
        case 3:
            bytes.remove(at, 1);
            break;
        default:
            bytes.truncate(at);
    }
}

bool survives(const QByteArray& bytes, const QString& seed,
              const std::function<void(const QByteArray&)>& check) {
    try {
        check(bytes);
        return true;
    } catch (const std::exception& broken) {
        ADD_FAILURE() << broken.what() << ", from the seed " << qPrintable(seed) << ": "
                      << bytes.toHex().constData();
        return false;
    }
}

}  // namespace

bool survivesChangedSeeds(const QString& folder, int rounds,
                          const std::function<void(const QByteArray&)>& check) {
    const QDir seeds(QStringLiteral(REGALON_SOURCE_DIR) + u'/' + folder);
    const QStringList names = seeds.entryList(QDir::Files, QDir::Name);
    if (names.isEmpty()) {
        ADD_FAILURE() << "No seeds in " << qPrintable(seeds.path());
        return false;
    }
    std::mt19937 random(20240131);
    for (const QString& name : names) {
        QFile file(seeds.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(name);
        const QByteArray seed = file.readAll();
        if (!survives(seed, name, check))
            return false;
        for (int round = 0; round < rounds; ++round) {
            QByteArray bytes = seed;
            for (auto changes = 1 + random() % 6; changes > 0; --changes)
                change(bytes, random);
            if (!survives(bytes, name, check))
                return false;
        }
    }
    return true;
}

}  // namespace regalon::test
