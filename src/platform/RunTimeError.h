#pragma once

#include <QString>
#include <QtGlobal>

#include <exception>

namespace regalon {

/// The failure that a handler reports: what the run-time, a procedure or the database said.
struct ErrorRecord {
    qint32 Number = 0;
    QString Description;
    QString Source;
    qint32 LastDllError = 0;
};

/// Numbers of the run-time failures. Users and support know the failures by these numbers, and several
/// routines choose their behaviour by them.
namespace RunTime {
inline constexpr qint32 InvalidProcedureCall = 5;
inline constexpr qint32 Overflow = 6;
inline constexpr qint32 OutOfMemory = 7;
inline constexpr qint32 SubscriptOutOfRange = 9;
inline constexpr qint32 DivisionByZero = 11;
inline constexpr qint32 TypeMismatch = 13;
inline constexpr qint32 InternalError = 51;
inline constexpr qint32 BadFileName = 52;
inline constexpr qint32 FileNotFound = 53;
inline constexpr qint32 DeviceIOError = 57;
inline constexpr qint32 FileAlreadyExists = 58;
inline constexpr qint32 DiskFull = 61;
inline constexpr qint32 InputPastEnd = 62;
inline constexpr qint32 PermissionDenied = 70;
inline constexpr qint32 PathFileAccess = 75;
inline constexpr qint32 PathNotFound = 76;
inline constexpr qint32 ObjectNotSet = 91;
inline constexpr qint32 InvalidUseOfNull = 94;
inline constexpr qint32 ControlArrayElement = 340;
inline constexpr qint32 ObjectAlreadyLoaded = 360;
inline constexpr qint32 CannotUnloadDesignControl = 362;
inline constexpr qint32 InvalidPropertyValue = 380;
inline constexpr qint32 CannotCreateObject = 429;
inline constexpr qint32 NoSuchMember = 438;
inline constexpr qint32 AutomationError = 440;
inline constexpr qint32 NamedArgument = 448;
inline constexpr qint32 RemoteServerGone = 462;
inline constexpr qint32 InvalidPicture = 481;
inline constexpr qint32 ItemNotInCollection = 3265;
inline constexpr qint32 IndexOutOfBounds = 35600;
inline constexpr qint32 ElementNotFound = 35601;
inline constexpr qint32 KeyNotUnique = 35602;
inline constexpr qint32 ImageListNotSet = 35613;

/// The English text that belongs to a number; a general text for a number without one.
QString description(qint32 number);
}  // namespace RunTime

/// The one exception of the client. Everything that can fail raises it, and the standard handler reports it.
class RunTimeError : public std::exception {
public:
    /// Takes the description that belongs to the number and the program's name as source.
    explicit RunTimeError(qint32 number);
    /// An empty source becomes the program's name.
    RunTimeError(qint32 number, const QString& description, const QString& source = QString(),
                 qint32 lastDllError = 0);
    explicit RunTimeError(const ErrorRecord& record);

    const ErrorRecord& record() const noexcept { return m_record; }
    qint32 number() const noexcept { return m_record.Number; }
    /// The description in UTF-8.
    const char* what() const noexcept override { return m_what.constData(); }

private:
    ErrorRecord m_record;
    QByteArray m_what;
};

/// Raises 429 for a part of the program that this version does not have; `what` is its name on the screen.
[[noreturn]] void raiseNotAvailable(const QString& what);

/// The failure being handled; to be called inside a catch block only. Exceptions of the standard library are
/// given the number nearest to their meaning (bad_alloc 7, out_of_range 9, anything unknown 51).
/// Outside a catch block the number is 0.
ErrorRecord currentError();

}  // namespace regalon
