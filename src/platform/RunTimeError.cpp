#include "platform/RunTimeError.h"

#include <QHash>

#include <filesystem>
#include <functional>
#include <new>
#include <stdexcept>
#include <typeinfo>
#include <variant>

namespace regalon {
namespace {

/// Source of every failure that names none; the reports show it behind the description.
QString programName() {
    return QStringLiteral("Regalon");
}

const QHash<qint32, QString>& descriptions() {
    static const QHash<qint32, QString> texts{
        {RunTime::InvalidProcedureCall, QStringLiteral("Invalid procedure call or argument")},
        {RunTime::Overflow, QStringLiteral("Overflow")},
        {RunTime::OutOfMemory, QStringLiteral("Out of memory")},
        {RunTime::SubscriptOutOfRange, QStringLiteral("Subscript out of range")},
        {RunTime::DivisionByZero, QStringLiteral("Division by zero")},
        {RunTime::TypeMismatch, QStringLiteral("Type mismatch")},
        {RunTime::InternalError, QStringLiteral("Internal error")},
        {RunTime::BadFileName, QStringLiteral("Bad file name or number")},
        {RunTime::FileNotFound, QStringLiteral("File not found")},
        {RunTime::DeviceIOError, QStringLiteral("Device I/O error")},
        {RunTime::FileAlreadyExists, QStringLiteral("File already exists")},
        {RunTime::DiskFull, QStringLiteral("Disk full")},
        {RunTime::InputPastEnd, QStringLiteral("Input past end of file")},
        {RunTime::PermissionDenied, QStringLiteral("Permission denied")},
        {RunTime::PathFileAccess, QStringLiteral("Path/File access error")},
        {RunTime::PathNotFound, QStringLiteral("Path not found")},
        {RunTime::ObjectNotSet, QStringLiteral("Object variable or With block variable not set")},
        {RunTime::InvalidUseOfNull, QStringLiteral("Invalid use of Null")},
        {RunTime::ControlArrayElement, QStringLiteral("Control array element doesn't exist")},
        {RunTime::ObjectAlreadyLoaded, QStringLiteral("Object already loaded")},
        {RunTime::CannotUnloadDesignControl, QStringLiteral("Can't unload controls created at design time")},
        {RunTime::InvalidPropertyValue, QStringLiteral("Invalid property value")},
        {RunTime::CannotCreateObject, QStringLiteral("ActiveX component can't create object")},
        {RunTime::NoSuchMember, QStringLiteral("Object doesn't support this property or method")},
        {RunTime::AutomationError, QStringLiteral("Automation error")},
        {RunTime::NamedArgument, QStringLiteral("Named argument not found")},
        {RunTime::RemoteServerGone,
         QStringLiteral("The remote server machine does not exist or is unavailable")},
        {RunTime::InvalidPicture, QStringLiteral("Invalid picture")},
        {RunTime::ItemNotInCollection,
         QStringLiteral(
             "Item cannot be found in the collection corresponding to the requested name or ordinal.")},
        {RunTime::IndexOutOfBounds, QStringLiteral("Index out of bounds")},
        {RunTime::ElementNotFound, QStringLiteral("Element not found")},
        {RunTime::KeyNotUnique, QStringLiteral("Key is not unique in collection")},
        {RunTime::ImageListNotSet, QStringLiteral("ImageList must be initialized before it can be used")},
    };
    return texts;
}

ErrorRecord wrapped(qint32 number, const std::exception& error) {
    ErrorRecord record{number, RunTime::description(number), programName(), 0};
    if (!descriptions().contains(number) || number == RunTime::InternalError)
        record.Description += QStringLiteral(": ") + QString::fromUtf8(error.what());
    return record;
}

}  // namespace

QString RunTime::description(qint32 number) {
    return descriptions().value(number, QStringLiteral("Application-defined or object-defined error"));
}

RunTimeError::RunTimeError(qint32 number) : RunTimeError(number, RunTime::description(number)) {}

RunTimeError::RunTimeError(qint32 number, const QString& description, const QString& source,
                           qint32 lastDllError)
    : RunTimeError(ErrorRecord{number, description, source, lastDllError}) {}

RunTimeError::RunTimeError(const ErrorRecord& record) : m_record(record) {
    if (m_record.Source.isEmpty())
        m_record.Source = programName();
    m_what = m_record.Description.toUtf8();
}

void raiseNotAvailable(const QString& what) {
    throw RunTimeError(RunTime::CannotCreateObject,
                       what + QStringLiteral(" - funkcja niedostępna w tej wersji programu. "));
}

ErrorRecord currentError() {
    const std::exception_ptr current = std::current_exception();
    if (!current)
        return {};
    try {
        std::rethrow_exception(current);
    } catch (const RunTimeError& error) {
        return error.record();
    } catch (const std::bad_alloc& error) {
        return wrapped(RunTime::OutOfMemory, error);
    } catch (const std::out_of_range& error) {
        return wrapped(RunTime::SubscriptOutOfRange, error);
    } catch (const std::overflow_error& error) {
        return wrapped(RunTime::Overflow, error);
    } catch (const std::invalid_argument& error) {
        return wrapped(RunTime::InvalidProcedureCall, error);
    } catch (const std::domain_error& error) {
        return wrapped(RunTime::InvalidProcedureCall, error);
    } catch (const std::length_error& error) {
        return wrapped(RunTime::InvalidProcedureCall, error);
    } catch (const std::bad_cast& error) {
        return wrapped(RunTime::TypeMismatch, error);
    } catch (const std::bad_variant_access& error) {
        return wrapped(RunTime::TypeMismatch, error);
    } catch (const std::bad_function_call& error) {
        return wrapped(RunTime::ObjectNotSet, error);
    } catch (const std::filesystem::filesystem_error& error) {
        return wrapped(RunTime::PathFileAccess, error);
    } catch (const std::exception& error) {
        return wrapped(RunTime::InternalError, error);
    } catch (...) {
        return {RunTime::InternalError, RunTime::description(RunTime::InternalError), programName(), 0};
    }
}

}  // namespace regalon
