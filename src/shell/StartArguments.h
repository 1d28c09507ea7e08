#pragma once

#include <QString>
#include <QtGlobal>

namespace regalon {

/// What the command line says: "-<connection file> -<user number>".
struct StartArguments {
    QString ConnectionFilePath;
    qint16 UserSign = 0;

    /// Reads a command line: the arguments joined by one blank each. False unless both values are there and
    /// the second is a whole number of 16 bits; further values are ignored. Never throws.
    static bool read(const QString& commandLine, StartArguments& arguments);
};

}  // namespace regalon
