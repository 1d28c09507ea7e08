#include "shell/modMain.h"

#include "common/AppContext.h"
#include "common/ErrorTrap.h"

namespace regalon {

void Main(AppContext& context) {
    ClassTrap(context, "modMain", "Main", [&] { context.ErrorService = std::make_unique<clsError>(); });
}

}  // namespace regalon
