#include "shell/recent_menu.h"

#include "program/program.h"
#include "shell/account_files.h"
#include "store/recent_accounts.h"

#include <QFileInfo>

RecentMenu::RecentMenu(Program &program, QWidget *parent) : QMenu(parent), m_program(program)
{
    setObjectName(QStringLiteral("RecentAccounts"));
    setAccessibleName(QStringLiteral("Accounts opened last"));
    setToolTipsVisible(true);
    connect(this, &QMenu::aboutToShow, this, [this] { Fill(); });
}

void RecentMenu::Fill()
{
    clear();
    int number = 0;
    for (const QString &path : RecentAccounts(m_program.services.settingsStore)) {
        const int width = fontMetrics().averageCharWidth() * 60;
        QString name = fontMetrics().elidedText(AccountNameOf(path), Qt::ElideMiddle, width);
        name.replace(QLatin1Char('&'), QLatin1String("&&"));
        QAction *account = addAction(QStringLiteral("&%1 %2").arg(++number).arg(name));
        account->setToolTip(path); // accounts in two folders may bear one name
        account->setEnabled(QFileInfo(path).isFile());
        const bool isOpen = m_program.databases.accountLock.Holds(path);
        account->setCheckable(isOpen);
        account->setChecked(isOpen);
        connect(account, &QAction::triggered, this, [this, path, isOpen] {
            if (!isOpen && OnAccount)
                OnAccount(path);
        });
    }
    if (isEmpty())
        addAction(QStringLiteral("No account was opened yet"))->setEnabled(false);
}
