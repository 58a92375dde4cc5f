#include "platform/widgets/cell_drop_down.h"
#include "platform/widgets/data_grid.h"
#include "platform/widgets/field_edit.h"
#include "transactions/frm_security_update.h"
#include "transactions/securities.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QTabWidget>
#include <QVBoxLayout>

void frmSecurityUpdate::BuildControls()
{
    SSTabAssetClass = new QTabWidget(this);
    SSTabAssetClass->setObjectName(QStringLiteral("SSTabAssetClass"));
    SSTabAssetClass->setAccessibleName(QStringLiteral("Security and its asset classes"));
    BuildSecurityTab();
    BuildClassesTab();

    auto *buttons = new QHBoxLayout;
    BuildButtons();
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdClose);
    buttons->addStretch();
    buttons->addWidget(cmdHelp);
    auto *all = new QVBoxLayout(this);
    all->addWidget(SSTabAssetClass, 1);
    all->addLayout(buttons);
}

namespace
{

QLabel *Label(const QString &caption, QWidget *buddy)
{
    auto *label = new QLabel(caption, buddy->parentWidget());
    label->setBuddy(buddy);
    QString name = caption;
    buddy->setAccessibleName(name.remove(QLatin1Char('&')));
    return label;
}

} // namespace

void frmSecurityUpdate::BuildSecurityTab()
{
    auto *page = new QWidget(SSTabAssetClass);
    const auto named = [page](auto *control, const char *name) {
        control->setParent(page);
        control->setObjectName(QString::fromUtf8(name));
        return control;
    };
    txtSymbol = named(new FieldEdit, "txtSymbol");
    txtName = named(new FieldEdit, "txtName");
    combSecurityType = named(new QComboBox, "combSecurityType");
    combSecurityType->addItems(SecurityTypes());
    combSymbolList = named(new QComboBox, "combSymbolList");
    for (QComboBox *list : {combSecurityType, combSymbolList}) {
        list->setCurrentIndex(-1);
        list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    }
    combSymbolList->setMaxVisibleItems(20);
    combSymbolList->setPlaceholderText(QStringLiteral("Select another security to edit"));

    auto *fields = new QGridLayout(page);
    int row = 0;
    const std::pair<const char *, QWidget *> rows[] = {{"&Symbol", txtSymbol},
                                                       {"&Name", txtName},
                                                       {"&Type", combSecurityType},
                                                       {"S&ecurities", combSymbolList}};
    for (const auto &[caption, control] : rows) {
        if (control == combSymbolList)
            fields->setRowMinimumHeight(row++, 12);
        fields->addWidget(Label(QString::fromUtf8(caption), control), row, 0);
        fields->addWidget(control, row++, 1);
    }
    fields->setRowStretch(row, 1);
    fields->setColumnStretch(1, 1);
    txtName->setMinimumWidth(fontMetrics().averageCharWidth() * 40);
    SSTabAssetClass->addTab(page, QStringLiteral("Security"));
}

void frmSecurityUpdate::BuildClassesTab()
{
    auto *page = new QWidget(SSTabAssetClass);
    lblAssetClass = new QLabel(page);
    lblAssetClass->setObjectName(QStringLiteral("lblAssetClass"));

    DataGridAssetClass = new DataGrid(page);
    DataGridAssetClass->setObjectName(QStringLiteral("DataGridAssetClass"));
    DataGridAssetClass->setAccessibleName(QStringLiteral("Asset classes"));
    DataGridAssetClass->setToolTip(
        QStringLiteral("Type a class or pick one from its list; Delete removes the row"));
    DataGridAssetClass->setMinimumSize(TextSize(83, 14));
    DataGridAssetClass->SetSource(AssetClassColumns(), &m_source);
    DataGridAssetClass->SetAllowAddNew(true);

    dtlAssetClass = new CellDropDown(*DataGridAssetClass, ClassColumn);
    dtlAssetClass->setObjectName(QStringLiteral("dtlAssetClass"));
    dtlAssetClass->setAccessibleName(QStringLiteral("Asset class list"));

    txtPerCentAllocated = new FieldEdit(page);
    txtPerCentAllocated->setObjectName(QStringLiteral("txtPerCentAllocated"));
    txtPerCentAllocated->setReadOnly(true);
    txtPerCentAllocated->setAlignment(Qt::AlignRight);
    txtPerCentAllocated->setMaximumWidth(fontMetrics().averageCharWidth() * 16);

    auto *total = new QHBoxLayout;
    total->addStretch();
    total->addWidget(Label(QStringLiteral("Total allocated"), txtPerCentAllocated));
    total->addWidget(txtPerCentAllocated);
    auto *rows = new QVBoxLayout(page);
    rows->addWidget(lblAssetClass);
    rows->addWidget(DataGridAssetClass, 1);
    rows->addLayout(total);
    SSTabAssetClass->addTab(page, QStringLiteral("Asset Class"));
}

void frmSecurityUpdate::BuildButtons()
{
    cmdOK = MakeButton("cmdOK", "&OK");
    cmdOK->setDefault(true);
    cmdClose = MakeButton("cmdClose", "&Close");
    cmdHelp = MakeButton("cmdHelp", "&Help");
}

void frmSecurityUpdate::ConnectControls()
{
    txtSymbol->OnGotFocus = [this] {
        Status(m_isEdit ? QStringLiteral("Change symbol name if necessary")
                        : QStringLiteral("Enter new symbol name"));
    };
    txtName->OnGotFocus = [this] {
        Status(m_isEdit ? QStringLiteral("Make changes to security name")
                        : QStringLiteral("Enter security name for this new symbol"));
    };
    txtSymbol->OnLostFocus = [this] { Guarded([this] { txtSymbol_LostFocus(); }); };
    txtName->OnLostFocus = [this] { Guarded([this] { txtName_LostFocus(); }); };
    On(combSymbolList, &QComboBox::activated, [this] { combSymbolList_LostFocus(); });
    combSymbolList->installEventFilter(this);

    DataGridAssetClass->OnBeforeUpdate = [this](int row) {
        bool allowed = false;
        Guarded([&] { allowed = DataGridAssetClass_BeforeUpdate(row); });
        return allowed;
    };
    DataGridAssetClass->OnAfterUpdate = [this](int) {
        AdodcSecurityAssetClass.SumAllocation();
        ShowPercentTotal();
        dtlAssetClass->Follow();
    };
    DataGridAssetClass->OnNewRow = [this] {
        if (DataGridAssetClass->EditedText(PerCentColumn).isEmpty())
            DataGridAssetClass->SetEditedText(
                PerCentColumn, m_program.services.formats.Format(Single(), u"Percent"));
    };
    DataGridAssetClass->OnDeleteKey = [this](int row) {
        Guarded([this, row] { DataGridAssetClass_Delete(row); });
    };
    DataGridAssetClass->OnRowColChange = [this] { dtlAssetClass->Follow(); };
    dtlAssetClass->OnPicked = [this](const QString &) {
        DataGridAssetClass->CommitRow();
        DataGridAssetClass->setFocus();
    };

    OnClick(cmdOK, [this] { cmdOK_Click(); });
    OnClick(cmdClose, [this] { UnloadMe(); });
    OnClick(cmdHelp,
            [this] { m_program.screens.ShowHelp(QStringLiteral("DTSecurityUpdate.html")); });

    QWidget *order[] = {
        SSTabAssetClass,    txtSymbol,           txtName, combSecurityType, combSymbolList,
        DataGridAssetClass, txtPerCentAllocated, cmdOK,   cmdClose,         cmdHelp};
    for (size_t at = 1; at < std::size(order); ++at)
        setTabOrder(order[at - 1], order[at]);
}
