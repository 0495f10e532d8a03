#pragma once
#include "windowfixture.h"
#include <QAction>
#include <QClipboard>

/// An active main window with the menus and keys of the product.
class ProductMenus : public WindowFixture
{
public:
    ProductMenus()
    {
        QGuiApplication::clipboard()->clear();
        QFile ui(QStringLiteral(VARNEL_SOURCE_DIR "/config/uiconfig.xml"));
        if (!ui.open(QIODevice::ReadOnly))
            qFatal("cannot read");
        static const QRegularExpression icons(QStringLiteral(" icon=\"[^\"]*\""));
        const QString content = QString::fromUtf8(ui.readAll()).remove(icons);
        installation.write(QStringLiteral("config/uiconfig.xml"), content.toUtf8());
        restart();
        window->activateWindow();
        [[maybe_unused]] const bool active = QTest::qWaitForWindowActive(window.get());
    }

    [[nodiscard]] QAction *action(const QString &name) const { return window->findChild<QAction *>(name); }

    /// Those of @p names that are enabled.
    [[nodiscard]] QString enabled(const QString &names) const
    {
        QStringList found = names.split(QLatin1Char(' '));
        found.removeIf([this](const QString &name) { return !action(name)->isEnabled(); });
        return found.join(QLatin1Char(' '));
    }
};
