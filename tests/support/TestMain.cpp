#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLocale>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>

namespace {

constexpr QFileDevice::Permissions everybody{0x7777};

/// Every test program has a home of its own, so that nothing of the person who runs it is read or written.
std::unique_ptr<QTemporaryDir> prepareHome() {
    auto home = std::make_unique<QTemporaryDir>();
    const QDir folder(home->path());
    const auto point = [&folder](const char* variable, const QString& name) {
        folder.mkpath(name);
        qputenv(variable, folder.filePath(name).toUtf8());
    };
    point("XDG_CONFIG_HOME", QStringLiteral("config"));
    point("XDG_DATA_HOME", QStringLiteral("data"));
    point("XDG_CACHE_HOME", QStringLiteral("cache"));
    point("XDG_RUNTIME_DIR", QStringLiteral("run"));
    QFile::setPermissions(folder.filePath(QStringLiteral("run")),
                          QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    point("TMPDIR", QStringLiteral("tmp"));
    // As open as the machine's own one, for tests that go on as another user.
    QFile::setPermissions(home->path(),
                          QFile::permissions(home->path()) | QFileDevice::ExeGroup | QFileDevice::ExeOther);
    QFile::setPermissions(folder.filePath(QStringLiteral("tmp")), everybody);
    point("REGALON_DRIVE_C", QStringLiteral("drive_c"));
    folder.mkpath(QStringLiteral("drive_c/Regalon"));
    return home;
}

}  // namespace

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const std::unique_ptr<QTemporaryDir> home = prepareHome();
    QLocale::setDefault(QLocale(QLocale::Polish, QLocale::Poland));
    QApplication::setStyle(QStringLiteral("Fusion"));
    QApplication app(argc, argv);
    // Tests open and close windows at will.
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
