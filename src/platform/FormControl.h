#pragma once

#include "platform/RunTimeError.h"

#include <QString>
#include <QWidget>

namespace regalon {

/// The control of this design name on a form, in whatever frame of it, for routines that serve any form with
/// such a control. Raises 91 without a form and 438 for a form that has none of this name and kind.
template <class Control>
Control& controlOf(const QWidget* form, const QString& name) {
    if (form == nullptr)
        throw RunTimeError(RunTime::ObjectNotSet);
    auto* const control = form->findChild<Control*>(name);
    if (control == nullptr)
        throw RunTimeError(RunTime::NoSuchMember);
    return *control;
}

}  // namespace regalon
