// SPDX-License-Identifier: MIT
#include <icominterfacemodelprovider.h>

#include <QtCore/QPluginLoader>
#include <QtCore/QTextStream>
#include <QtCore/QTimer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QListView>

/// example-host PLUGIN [SECONDS]: shows the plugin's gamepads and prints what the selected ones send.
int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("example-host"));
    QTextStream out(stdout);

    QPluginLoader loader(app.arguments().value(1));
    auto *provider = qobject_cast<IComInterfaceModelProvider *>(loader.instance());
    if (!provider) {
        out << "cannot load the plugin: " << loader.errorString() << Qt::endl;
        return 1;
    }
    out << "loaded " << provider->interfaceName() << " by " << provider->providerName() << Qt::endl;

    // The model comes first: the delegate's buttons are wired to it when the delegate is made.
    QListView view;
    view.setModel(provider->model(QStringLiteral("example"), &app));
    view.setItemDelegate(provider->delegate(&app));

    // Each list replaces the one before it. Devices go by deleteLater, and their connections with them.
    QObject::connect(provider, &IComInterfaceModelProvider::selectedInterfacesChanged, &view,
                     [&](const QList<IComInterface *> &devices) {
                         for (IComInterface *device : devices) {
                             // The same device may come again: connect it once.
                             device->disconnect(&view);
                             QObject::connect(
                                 device,
                                 qOverload<int, int, const QStringList &, const QVariantList &>(
                                     &IComInterface::dataChanged),
                                 &view, [&](int, int, const QStringList &keys, const QVariantList &values) {
                                     for (qsizetype i = 0; i < keys.size(); ++i)
                                         out << keys[i] << " = " << values[i].toString() << Qt::endl;
                                 });
                         }
                         out << devices.size() << " selected" << Qt::endl;
                     });

    view.show();
    if (const int seconds = app.arguments().value(2).toInt(); seconds > 0)
        QTimer::singleShot(seconds * 1000, &app, &QApplication::quit);
    return QApplication::exec();
}
