// One process of the program without its windows. It claims before there is an application object, prints the
// outcome, and as the one instance follows lines of its standard input: "gui" makes the application object,
// "start" starts delivery, "quit" ends it. What is delivered is printed, a line each. Started as a D-Bus
// service it does the first two by itself, and ends at the action "quit".

#include "platform/ApplicationService.h"
#include "platform/Platform.h"

#include <QGuiApplication>
#include <QSocketNotifier>

#include <cstdio>
#include <iostream>
#include <string>

using quillbay::platform::ApplicationService;

namespace {

void say(const QString &line)
{
    std::puts(qPrintable(line));
    std::fflush(stdout);
}

QString environmentState()
{
    const bool any =
        qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN") || qEnvironmentVariableIsSet("DESKTOP_STARTUP_ID");
    return any ? QStringLiteral("environment kept") : QStringLiteral("environment clean");
}

QStringList texts(const QVariantList &values)
{
    QStringList result;
    for (const QVariant &value : values)
        result.append(value.isValid() ? value.toString() : QStringLiteral("invalid"));
    return result;
}

} // namespace

int main(int argc, char **argv)
{
    QStringList urls;
    bool serving = false;
    for (int i = 1; i < argc; ++i) {
        if (qstrcmp(argv[i], "--gapplication-service") == 0)
            serving = true;
        else
            urls.append(QString::fromLocal8Bit(argv[i]));
    }
    const auto service = quillbay::platform::createApplicationService();
    const auto claim = service->claim(urls);
    if (claim != ApplicationService::Claim::Primary) {
        say(claim == ApplicationService::Claim::Forwarded ? QStringLiteral("forwarded")
                                                          : QStringLiteral("refused"));
        say(environmentState());
        return claim == ApplicationService::Claim::Forwarded ? 0 : 1;
    }
    say(QStringLiteral("primary"));

    std::string line;
    while (!serving && std::getline(std::cin, line) && line != "gui") {
    }
    QGuiApplication application(argc, argv);
    application.setQuitOnLastWindowClosed(false);
    QObject::connect(service.get(), &ApplicationService::activated, service.get(),
                     [](const QString &token) { say(QStringLiteral("activated ") + token); });
    QObject::connect(
        service.get(), &ApplicationService::opened, service.get(),
        [](const QStringList &opened) { say(QStringLiteral("opened ") + opened.join(QLatin1Char(' '))); });
    QObject::connect(
        service.get(), &ApplicationService::actionRequested, service.get(),
        [serving](const QString &action, const QVariantList &parameters) {
            say(QStringLiteral("action %1 %2").arg(action, texts(parameters).join(QLatin1Char(' '))));
            if (serving && action == QLatin1String("quit"))
                QCoreApplication::quit();
        });
    QSocketNotifier input(0, QSocketNotifier::Read);
    input.setEnabled(!serving);
    QObject::connect(&input, &QSocketNotifier::activated, service.get(), [&] {
        if (!std::getline(std::cin, line) || line == "quit")
            QCoreApplication::quit();
        else if (line == "start")
            service->start();
        say(QStringLiteral("done ") + QString::fromStdString(line) + QLatin1Char(' ') + environmentState());
    });
    say(QStringLiteral("gui"));
    if (serving)
        service->start();
    return QGuiApplication::exec();
}
