/// The tab of the asset classes.

#include "transactions/frm_security_update_classes.h"

#include "platform/widgets/cell_drop_down.h"
#include "platform/widgets/data_grid.h"
#include "platform/widgets/field_edit.h"
#include "transactions/frm_security_update.h"

#include <QKeyEvent>
#include <QLabel>

std::vector<GridColumn> AssetClassColumns()
{
    return {{.caption = QStringLiteral("Symbol"),
             .dataField = QStringLiteral("Symbol"),
             .hidden = true},
            {.caption = QStringLiteral("AssetClass"),
             .dataField = QStringLiteral("AssetClass"),
             .width = 310,
             .editable = true},
            {.caption = QStringLiteral("PerCentAllocated"),
             .dataField = QStringLiteral("PerCentAllocated"),
             .alignment = Qt::AlignRight,
             .width = 160,
             .editable = true}};
}

QString AssetClassSource::Text(int row, int column) const
{
    switch (column) {
    case SymbolColumn:
        return m_classes.Symbol();
    case ClassColumn:
        return m_classes.At(row).AssetClass;
    case PerCentColumn:
        return m_formats.Format(m_classes.At(row).PerCentAllocated, u"Percent");
    default:
        return QString();
    }
}

bool AssetClassSource::Store(int row, const QMap<int, QString> &texts)
{
    const bool isNew = row >= m_classes.RecordCount();
    AssetClassRow changed = isNew ? AssetClassRow() : m_classes.At(row);
    if (texts.contains(ClassColumn))
        changed.AssetClass = texts[ClassColumn].trimmed();
    // What is shown has two decimals; a share that was not touched keeps all of its own.
    if (texts.contains(PerCentColumn) &&
        (isNew || texts[PerCentColumn] != Text(row, PerCentColumn))) {
        const std::optional<Single> share = AllocationFromText(texts[PerCentColumn], m_formats);
        if (!share)
            return false;
        changed.PerCentAllocated = *share;
    }
    if (isNew)
        m_classes.Add(changed);
    else
        m_classes.Set(row, changed);
    return true;
}

void frmSecurityUpdate::ShowClasses()
{
    DataGridAssetClass->CancelRow();
    DataGridAssetClass->RefreshRows();
    dtlAssetClass->Follow();
    ShowPercentTotal();
}

void frmSecurityUpdate::ShowPercentTotal()
{
    txtPerCentAllocated->setText(
        m_program.services.formats.Format(AdodcSecurityAssetClass.PercentTotal, u"Percent"));
    if (txtPerCentAllocated->hasFocus())
        txtPerCentAllocated->selectAll();
    lblAssetClass->setText(AdodcSecurityAssetClass.RecordCount() > 1
                               ? QString()
                               : QStringLiteral("A single class without a percentage counts as the "
                                                "whole of the security."));
}

void frmSecurityUpdate::LoadClassNames()
{
    m_classNames = AssetClassNames(m_program.databases.gConnApplControl);
    dtlAssetClass->clear();
    dtlAssetClass->addItems(m_classNames);
    dtlAssetClass->setCurrentIndex(-1);
}

/// False keeps the row in edit: its percentage is no number.
bool frmSecurityUpdate::DataGridAssetClass_BeforeUpdate(int row)
{
    if (!AllocationFromText(DataGridAssetClass->EditedText(PerCentColumn),
                            m_program.services.formats)) {
        MsgBox(QStringLiteral("Please enter the percentage as a number, such as 25% or 0.25"),
               Box::Exclamation, EditorTitle());
        return false;
    }
    const QString name = DataGridAssetClass->EditedText(ClassColumn).trimmed();
    const bool isChanged = row >= AdodcSecurityAssetClass.RecordCount() ||
                           name != AdodcSecurityAssetClass.At(row).AssetClass;
    if (name.isEmpty() || !isChanged)
        return true;
    for (const QString &known : m_classNames)
        if (known.compare(name, Qt::CaseInsensitive) == 0) {
            DataGridAssetClass->SetEditedText(ClassColumn, known);
            return true;
        }
    if (MsgBox(NewAssetClassQuestion(name), Box::YesNo, EditorTitle()) == Answer::Yes) {
        AddAssetClassName(m_program.databases.gRsApplication, name,
                          m_program.services.clock.Today());
        LoadClassNames();
    }
    return true; // the row keeps the name in any case
}

void frmSecurityUpdate::DataGridAssetClass_Delete(int row)
{
    if (DataGridAssetClass->IsRowEdited()) {
        DataGridAssetClass->CancelRow();
        return;
    }
    AdodcSecurityAssetClass.Delete(row);
    AdodcSecurityAssetClass.SumAllocation();
    ShowClasses();
}

/// Alt+Down opens the list of classes, as the arrow in the cell does.
void frmSecurityUpdate::keyPressEvent(QKeyEvent *event)
{
    if (event->modifiers().testFlag(Qt::AltModifier) && event->key() == Qt::Key_Down &&
        dtlAssetClass->isVisible())
        dtlAssetClass->showPopup();
    else
        Form::keyPressEvent(event);
}
