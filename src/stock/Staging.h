#pragma once

#include <QString>

namespace regalon {

/// Work that is staged in rows of temporary tables on the server before it becomes stock. A row belongs to
/// the workstation, the connection and the user: the server finds out the first two by itself, so that only
/// the user's number travels. A data class that stages work derives from this on top of what else it is, and
/// reports under its own name.
template <class Base>
class Staging : public Base {
public:
    /// Deletes the staged rows of an application and an operation; Param 0 means all of them.
    bool ClearBarCodeOnTemp(qint16 UserSign, qint16 Param, const QString& Aplication,
                            const QString& Operation);

    /// Has the server propose locations for the staged rows anew. False with its reason when it cannot.
    bool ConfirmPropozytionLocation(qint16 UserSign, const QString& Aplication, const QString& Operation,
                                    QString& Message);

protected:
    using Base::Base;
    ~Staging() = default;
};

}  // namespace regalon
