#include "common/AppContext.h"

#include "platform/RunTimeError.h"

namespace regalon {

DbConnection& mainConnection(AppContext& context) {
    if (!context.ConnMain) {
        throw RunTimeError(RunTime::ObjectNotSet);
    }
    return *context.ConnMain;
}

QString iconFolder(const AppContext& context) {
    return context.PathBitmapMagSur.isEmpty() ? context.ProgramFolder + QStringLiteral("\\Ikony")
                                              : context.PathBitmapMagSur;
}

}  // namespace regalon
