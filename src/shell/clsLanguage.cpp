#include "shell/clsLanguage.h"

namespace regalon {

QString clsLanguage::GetMsgBoxText(const QString& /*strFormName*/, const QString& /*strMsgBoxName*/,
                                   const QString& strAlternativeText) const {
    return strAlternativeText;
}

QString clsLanguage::GetMsgBoxTitle(const QString& /*strFormName*/, const QString& /*strMsgBoxName*/,
                                    const QString& strAlternativeTitle) const {
    return strAlternativeTitle;
}

}  // namespace regalon
