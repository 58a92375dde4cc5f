#pragma once

/// The master data of a security: symbol, name, type, and how it splits over asset classes. A new
/// one gets its row in the open account; an edited one takes a new symbol or name through all that
/// repeats it, as soon as the field is left.
///
/// The mark of the popup entry popDTEdit, when it loads, says which of the two it is for. What was
/// posted last becomes final; the price cycle stands still.

#include "program/form.h"
#include "program/price_cycle_pause.h"
#include "transactions/frm_security_update_classes.h"
#include "transactions/security_master.h"

class CellDropDown;
class DataGrid;
class FieldEdit;
class QComboBox;
class QLabel;
class QTabWidget;

class frmSecurityUpdate : public Form
{
public:
    explicit frmSecurityUpdate(Program &program);

    void Load() override;
    /// Asks first while errors are flagged.
    bool QueryUnload() override;
    void OnUnload() override;

protected:
    void showEvent(QShowEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    // frm_security_update_layout.cpp
    void BuildControls();
    void BuildSecurityTab();
    void BuildClassesTab();
    void BuildButtons();
    void ConnectControls();

    SecurityWork Work();
    SecurityFields ReadFields() const;
    void ShowFields(const SecurityFields &fields);
    void ClearFields();
    void LoadSymbolList();
    void OpenTracker();

    void EditSecurityOf(const QString &symbol, const QString &name);
    /// Type, name and classes that the master list has for CurrentSymbol.
    void LoadSecurityRow();
    bool Write(const std::function<void()> &change);
    void FollowRow();
    void EditKnownSecurity(const QString &symbol);

    void txtSymbol_LostFocus();
    void RenameTo(const QString &symbol);
    void txtName_LostFocus();
    void combSymbolList_LostFocus();

    void cmdOK_Click();
    bool Validate();
    void GoToError(SecurityError error);
    void Save(const SecurityFields &fields);

    // frm_security_update_classes.cpp
    void ShowClasses();
    void ShowPercentTotal();
    void LoadClassNames();
    bool DataGridAssetClass_BeforeUpdate(int row);
    void DataGridAssetClass_Delete(int row);

    QTabWidget *SSTabAssetClass = nullptr;
    FieldEdit *txtSymbol = nullptr;
    FieldEdit *txtName = nullptr;
    QComboBox *combSecurityType = nullptr;
    QComboBox *combSymbolList = nullptr;
    DataGrid *DataGridAssetClass = nullptr;
    CellDropDown *dtlAssetClass = nullptr;
    FieldEdit *txtPerCentAllocated = nullptr;
    QLabel *lblAssetClass = nullptr;
    QPushButton *cmdOK = nullptr;
    QPushButton *cmdClose = nullptr;
    QPushButton *cmdHelp = nullptr;

    SecurityClasses AdodcSecurityAssetClass; ///< rows of the security in the fields
    AssetClassSource m_source;
    QStringList m_classNames;
    PriceCyclePause m_priceCyclePause;

    bool m_isEdit = false;
    bool EntryError = false; ///< the last check found something
    bool m_unloading = false;
    bool m_isRefused = false; ///< the last change of a field was not saved
    QString m_symbol;         ///< of the security in the fields; empty: none yet
    QString m_trackerSymbol;  ///< of its position row
    SecurityFields m_detail;  ///< as the master list has it
    Selection m_selection;    ///< the last one that has a position row
};
