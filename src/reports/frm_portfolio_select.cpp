#include "reports/frm_portfolio_select.h"

#include "platform/widgets/colors.h"
#include "reports/portfolio_selection.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPainter>
#include <QSignalBlocker>
#include <QStyledItemDelegate>
#include <QVBoxLayout>

#include <utility>

namespace
{

/// Gives the check boxes an outline that shows on a dark list as well; the style's own is darker
/// than any ground.
class OutlinedBoxes : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override
    {
        QStyledItemDelegate::paint(painter, option, index);
        QStyleOptionViewItem item = option;
        initStyleOption(&item, index);
        const QRect box = item.widget->style()->subElementRect(
            QStyle::SE_ItemViewItemCheckIndicator, &item, item.widget);
        const QPalette &palette = item.palette;
        painter->setPen(Mixed(palette.color(QPalette::Base), palette.color(QPalette::Text), 0.5));
        painter->drawRect(box.adjusted(0, 0, -1, -1));
    }
};

} // namespace

frmPortfolioSelect::frmPortfolioSelect(Program &program)
    : Form(program, QStringLiteral("frmPortfolioSelect"), QStringLiteral("Portfolio Selection"),
           Placement::Dialog),
      lstPortfolioNames(new QListWidget(this))
{
    BuildControls();
}

void frmPortfolioSelect::BuildControls()
{
    lstPortfolioNames->setObjectName(QStringLiteral("lstPortfolioNames"));
    lstPortfolioNames->setAccessibleName(QStringLiteral("Portfolios"));
    lstPortfolioNames->setItemDelegate(new OutlinedBoxes(lstPortfolioNames));
    auto *label = new QLabel(QStringLiteral("&Portfolios for the report:"), this);
    label->setBuddy(lstPortfolioNames);

    auto *cmdOK = MakeButton("cmdOK", "OK");
    cmdOK->setDefault(true);
    auto *cmdClose = MakeButton("cmdClose", "&Close");
    auto *cmdHelp = MakeButton("cmdHelp", "&Help");
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    for (QPushButton *button : {cmdOK, cmdClose, cmdHelp})
        buttons->addWidget(button);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addWidget(lstPortfolioNames);
    layout->addLayout(buttons);

    // A click on the box changes the item by itself, one beside it does not. Both are a click.
    On(lstPortfolioNames, &QListWidget::itemPressed, [this] { m_isToggled = false; });
    On(lstPortfolioNames, &QListWidget::itemChanged, [this](QListWidgetItem *item) {
        m_isToggled = true;
        StoreSelection(item);
    });
    On(lstPortfolioNames, &QListWidget::itemClicked,
       [this](QListWidgetItem *item) { lstPortfolioNames_Click(item); });
    OnClick(cmdOK, [this] { cmdOK_Click(); });
    OnClick(cmdClose, [this] { UnloadMe(); });
    OnClick(cmdHelp,
            [this] { m_program.screens.ShowHelp(QStringLiteral("PSPortfolioSelect.html")); });
}

void frmPortfolioSelect::Load()
{
    const QSignalBlocker quiet(lstPortfolioNames);
    for (const Portfolio &portfolio : ReadPortfolios(m_program.databases.gRsApplication)) {
        auto *item = new QListWidgetItem(portfolio.name, lstPortfolioNames);
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
        item->setCheckState(portfolio.isSelected ? Qt::Checked : Qt::Unchecked);
    }
    m_program.UserActed();
}

void frmPortfolioSelect::lstPortfolioNames_Click(QListWidgetItem *item)
{
    m_program.UserActed();
    if (!std::exchange(m_isToggled, false))
        item->setCheckState(item->checkState() == Qt::Checked ? Qt::Unchecked : Qt::Checked);
}

void frmPortfolioSelect::StoreSelection(QListWidgetItem *item)
{
    m_program.UserActed();
    const bool isSelected = item->checkState() == Qt::Checked;
    try {
        SelectPortfolio(m_program.databases.gRsApplication, item->text(), isSelected);
    } catch (const RuntimeError &) {
        const QSignalBlocker quiet(lstPortfolioNames);
        item->setCheckState(isSelected ? Qt::Unchecked : Qt::Checked);
        throw;
    }
}

void frmPortfolioSelect::cmdOK_Click()
{
    if (m_program.screens.ShowModal(QStringLiteral("frmDateSelect")))
        UnloadMe();
}
