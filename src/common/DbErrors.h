#pragma once

#include <QtGlobal>

namespace regalon {

/// Error numbers of the gateway. The five of the server side are HRESULT-style, the others are plain.
namespace DbError {
constexpr qint32 hresult(quint32 code) {
    return static_cast<qint32>(code);
}

inline constexpr qint32 General = hresult(0x80004005U);  ///< no server, lost connection, driver failure
inline constexpr qint32 Authentication = hresult(0x80040E4DU);  ///< the server refused the login
inline constexpr qint32 Statement = hresult(0x80040E14U);       ///< the server refused the statement
inline constexpr qint32 Integrity = hresult(0x80040E2FU);       ///< constraint, duplicate key, NULL refused
inline constexpr qint32 Timeout = hresult(0x80040E31U);         ///< no answer in time

inline constexpr qint32 NoCurrentRow = 3021;       ///< a value or MoveNext behind the last row
inline constexpr qint32 ItemNotFound = 3265;       ///< no field or parameter of that name or position
inline constexpr qint32 WrongValueType = 3421;     ///< a value that the parameter's type cannot hold
inline constexpr qint32 ObjectClosed = 3704;       ///< a recordset that is not open
inline constexpr qint32 ObjectOpen = 3705;         ///< Open of what is open already
inline constexpr qint32 NoDriver = 3706;           ///< the ODBC driver is not installed
inline constexpr qint32 InvalidConnection = 3709;  ///< a connection that is not open, or none
}  // namespace DbError

/// Data types of fields and parameters, by the platform's codes.
namespace DbType {
inline constexpr int SmallInt = 2;
inline constexpr int Integer = 3;
inline constexpr int Single = 4;
inline constexpr int Double = 5;
inline constexpr int Currency = 6;
inline constexpr int Boolean = 11;
inline constexpr int TinyInt = 17;  ///< unsigned, 0 to 255
inline constexpr int BigInt = 20;
inline constexpr int Guid = 72;
inline constexpr int Binary = 128;
inline constexpr int Char = 129;
inline constexpr int NationalChar = 130;
inline constexpr int Numeric = 131;
inline constexpr int DateTime = 135;
inline constexpr int VarChar = 200;
inline constexpr int Text = 201;
inline constexpr int NationalVarChar = 202;
inline constexpr int NationalText = 203;  ///< ntext and nvarchar(max)
inline constexpr int VarBinary = 204;
inline constexpr int Image = 205;  ///< image and varbinary(max)

/// Whether values of this type are text.
constexpr bool isText(int type) {
    return type == Char || type == NationalChar || (type >= VarChar && type <= NationalText);
}
}  // namespace DbType

}  // namespace regalon
