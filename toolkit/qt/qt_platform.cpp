#include "qt_platform.h"

#include <sys/stat.h>
#include <xcb/xcb.h>

#include <QCoreApplication>
#include <QFileInfo>
#include <QPluginLoader>
#include <QStringList>

#include <cstdlib>

namespace toolkit::qt {
namespace {

std::string env(const char* name) {
  const char* value = std::getenv(name);
  return value ? value : "";
}

// The platforms Qt would try, in its order.
QStringList candidates() {
  const QString set = QString::fromLocal8Bit(qgetenv("QT_QPA_PLATFORM"));
  if (!set.isEmpty()) return set.split(QLatin1Char(';'), Qt::SkipEmptyParts);
  // With no window system at all, draw off screen rather than fail to start.
  if (env("DISPLAY").empty() && env("WAYLAND_DISPLAY").empty())
    return {QStringLiteral("offscreen")};
  if (env("XDG_SESSION_TYPE") == "wayland" && !env("WAYLAND_DISPLAY").empty())
    return {QStringLiteral("wayland"), QStringLiteral("xcb")};
  return {QStringLiteral("xcb")};
}

// Why the platform's display cannot be reached; empty when it can.
std::string displayProblem(const QString& platform) {
  if (platform == QLatin1String("xcb")) {
    const std::string display = env("DISPLAY");
    if (display.empty()) return "no X display is named (DISPLAY is empty)";
    xcb_connection_t* connection = xcb_connect(display.c_str(), nullptr);
    const bool failed = xcb_connection_has_error(connection) != 0;
    xcb_disconnect(connection);
    if (failed) return "the display \"" + display + "\" cannot be opened";
  } else if (platform.startsWith(QLatin1String("wayland"))) {
    std::string socket = env("WAYLAND_DISPLAY");
    if (socket.empty()) socket = "wayland-0";
    if (socket.front() != '/') socket = env("XDG_RUNTIME_DIR") + "/" + socket;
    struct stat info {};
    if (stat(socket.c_str(), &info) != 0 || !S_ISSOCK(info.st_mode))
      return "the Wayland display \"" + socket + "\" cannot be opened";
  }
  return {};
}

// Why Qt's plug-in for the platform does not load; empty when it does.
std::string pluginProblem(const QString& platform) {
  QStringList folders;
  const QString own = QString::fromLocal8Bit(qgetenv("QT_QPA_PLATFORM_PLUGIN_PATH"));
  if (!own.isEmpty()) folders << own;
  for (const QString& path : QCoreApplication::libraryPaths())
    folders << path + QStringLiteral("/platforms");
  for (const QString& folder : folders) {
    const QString file = folder + QStringLiteral("/libq") + platform + QStringLiteral(".so");
    if (!QFileInfo::exists(file)) continue;
    QPluginLoader loader(file);  // stays loaded: Qt loads the same library next
    if (loader.load()) return {};
    return "Qt's platform plug-in \"" + platform.toStdString() +
           "\" does not load: " + loader.errorString().toStdString();
  }
  return "Qt has no platform plug-in \"" + platform.toStdString() + "\"";
}

}  // namespace

std::string choosePlatform() {
  std::string why;
  for (const QString& candidate : candidates()) {
    const QString name = candidate.section(QLatin1Char(':'), 0, 0);  // options follow a colon
    std::string problem = displayProblem(name);
    if (problem.empty()) problem = pluginProblem(name);
    if (problem.empty()) {
      qputenv("QT_QPA_PLATFORM", candidate.toLocal8Bit());
      return {};
    }
    if (why.empty()) why = problem;
  }
  return why.empty() ? std::string("no Qt platform is named") : why;
}

}  // namespace toolkit::qt
