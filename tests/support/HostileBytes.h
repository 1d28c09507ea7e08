#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <functional>

namespace regalon::test {

/// Gives the check every seed of a folder below the sources, and each seed in `rounds` forms with a few small
/// changes. The changes are the same in every run. False, with the failure of the test added, when a check
/// threw; also when the folder has no seeds.
bool survivesChangedSeeds(const QString& folder, int rounds,
                          const std::function<void(const QByteArray&)>& check);

}  // namespace regalon::test
