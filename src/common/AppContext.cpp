#include "common/AppContext.h"

#include "platform/RunTimeError.h"

namespace regalon {

DbConnection& mainConnection(AppContext& context) {
    if (!context.ConnMain) {
        throw RunTimeError(RunTime::ObjectNotSet);
    }
    return *context.ConnMain;
}

}  // namespace regalon
