#pragma once

/// A row of controls that goes on in a further line where the window is too narrow for it: a screen
/// beside others cuts no field off.
///
///     auto *head = new WrappingRow;
///     head->AddGroup({lblFrom, dtpFrom});              a label stays with its field
///     head->AddGroup({cmdOK});
///     head->AddStretch();
///     head->AddGroup({lblTransCount, txtTransCount});  at the right end of its line
///
/// The groups of a line stand on one base, so that what is in a frame with a title stands beside the
/// fields. Hidden groups take no place.

#include <QLayout>

#include <initializer_list>
#include <vector>

class WrappingRow : public QLayout
{
public:
    WrappingRow() = default;
    ~WrappingRow() override;

    void AddGroup(std::initializer_list<QWidget *> controls);
    /// The groups from here on stand at the right.
    void AddStretch() { m_atRight = true; }

    void addItem(QLayoutItem *item) override;
    int count() const override { return static_cast<int>(m_groups.size()); }
    QLayoutItem *itemAt(int index) const override;
    QLayoutItem *takeAt(int index) override;

    QSize sizeHint() const override; ///< all in one line
    QSize minimumSize() const override;
    Qt::Orientations expandingDirections() const override { return {}; }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    void setGeometry(const QRect &area) override;

private:
    struct Group
    {
        QLayoutItem *item;
        bool atRight;
    };
    struct Line
    {
        std::vector<const Group *> groups;
        int width = 0;
        int height = 0;
    };
    std::vector<Line> Lines(int width) const;
    int Gap(Qt::Orientation direction) const;

    std::vector<Group> m_groups;
    bool m_atRight = false;
};
