#include "map/LocationNameBatches.h"

namespace regalon {

namespace {

constexpr qsizetype kNamesInFullBatch = 251;

}  // namespace

void LocationNameBatches::add(const QString& name) {
    qsizetype batch = 0;
    while (batch < kCount - 1 && m_batches[batch].size() >= kNamesInFullBatch)
        ++batch;
    m_batches[batch].append(name);
}

std::array<QString, LocationNameBatches::kCount> LocationNameBatches::joined() const {
    std::array<QString, kCount> texts;
    for (qsizetype batch = 0; batch < kCount; ++batch)
        texts[batch] = m_batches[batch].join(QLatin1Char(','));
    return texts;
}

}  // namespace regalon
