#pragma once

#include <QtGlobal>

#include <functional>
#include <optional>

namespace regalon {

/// What the stand detail is told before it opens. A count without a value keeps what the detail showed last.
struct StandDetailRequest {
    qint32 TopStand = 0;   ///< wished top of the detail window, twips from the top of the screen
    qint32 LeftStand = 0;  ///< wished left, twips
    qint16 Rank = 0;
    qint16 Stand = 0;
    std::optional<qint16> ShelfCount;
    std::optional<qint16> LocationCount;
};

/// Shows the stand detail and returns when it has closed. Failures are thrown. Map windows get it handed in,
/// since some of them may not know the window itself.
using StandDetail = std::function<void(const StandDetailRequest& request)>;

}  // namespace regalon
