#pragma once

/// The rows of the class grid.

#include "platform/widgets/grid_source.h"
#include "transactions/asset_classes.h"

enum AssetClassColumn
{
    SymbolColumn,
    ClassColumn,
    PerCentColumn
};

std::vector<GridColumn> AssetClassColumns();

class AssetClassSource : public GridSource
{
public:
    AssetClassSource(SecurityClasses &classes, const Formats &formats)
        : m_classes(classes), m_formats(formats)
    {}
    int RowCount() const override { return m_classes.RecordCount(); }
    QString Text(int row, int column) const override;
    /// A new row begins without a share.
    bool Store(int row, const QMap<int, QString> &texts) override;

private:
    SecurityClasses &m_classes;
    const Formats &m_formats;
};
