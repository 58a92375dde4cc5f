#include "sample_form.h"

#include "driver/looks.h"

#include "driver/failure.h"
#include "platform/widgets/data_grid.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QVBoxLayout>

#include <gtest/gtest.h>

namespace
{

/// A form as the program has them, with a ground of its own colour.
class TheLooks : public SampleForm
{
protected:
    TheLooks()
    {
        QPalette palette = form.palette();
        palette.setColor(QPalette::Window, QColor("#102030"));
        palette.setColor(QPalette::WindowText, QColor("#f0f0f0"));
        palette.setColor(QPalette::Base, QColor("#fffff0"));
        palette.setColor(QPalette::Text, QColor("#000040"));
        palette.setColor(QPalette::Disabled, QPalette::Base, QColor("#102030"));
        palette.setColor(QPalette::Disabled, QPalette::Text, QColor("#808080"));
        form.setPalette(palette);
    }
};

TEST_F(TheLooks, AreTheColorsOfAFieldInItsState)
{
    auto *field = Add<QLineEdit>("txtName");
    form.show();
    EXPECT_EQ(Looks::Colors(field), "#000040 #fffff0");
    field->setEnabled(false);
    EXPECT_EQ(Looks::Colors(field), "#808080 #102030");
    field->setText("all of it is selected");
    field->setEnabled(true);
    field->selectAll();
    EXPECT_EQ(Looks::Colors(field), "#000040 #fffff0");
}

TEST_F(TheLooks, AreTheColorsBehindALabelOrItsOwn)
{
    auto *plain = Add<QLabel>("lblName");
    auto *filled = Add<QLabel>("lblTotal");
    plain->setText("Name");
    QPalette palette = filled->palette();
    palette.setColor(QPalette::Window, QColor("#c0ffc0"));
    filled->setPalette(palette);
    filled->setAutoFillBackground(true);
    form.show();
    EXPECT_EQ(Looks::Colors(plain), "#f0f0f0 #102030");
    EXPECT_EQ(Looks::Colors(filled), "#f0f0f0 #c0ffc0");
}

TEST_F(TheLooks, AreTheColorsOfAGridsRows)
{
    auto *grid = Add<DataGrid>("DataGridSample");
    form.show();
    EXPECT_EQ(Looks::Colors(grid), "#000040 #fffff0");
    grid->SetBackColor(qRgb(0xFF, 0xE0, 0xC0));
    EXPECT_TRUE(Looks::Colors(grid).endsWith(" #ffe0c0")) << qPrintable(Looks::Colors(grid));
}

TEST_F(TheLooks, AreTheFontThatIsAskedFor)
{
    auto *label = Add<QLabel>("lblName");
    QFont font("Arial", 9);
    label->setFont(font);
    EXPECT_EQ(Looks::Font(label), "Arial 9 regular");
    font.setPointSizeF(10.5);
    font.setBold(true);
    label->setFont(font);
    EXPECT_EQ(Looks::Font(label), "Arial 10.5 bold");
}

TEST_F(TheLooks, AreThePlaceOfAWindowOnTheScreen)
{
    Add<QLineEdit>("txtName");
    form.setGeometry(40, 30, 300, 200);
    form.show();
    const QRect frame = form.frameGeometry();
    EXPECT_EQ(Looks::Geometry(&form), QString("%1 %2 %3 %4")
                                          .arg(frame.x())
                                          .arg(frame.y())
                                          .arg(frame.width())
                                          .arg(frame.height()));
    EXPECT_TRUE(frame.contains(form.geometry()));
}

TEST_F(TheLooks, AreThePlaceOfAChildWithinItsArea)
{
    QMdiArea area;
    area.setGeometry(100, 100, 800, 600);
    auto *child = new QWidget;
    child->setObjectName("frmChild");
    QMdiSubWindow *frame = area.addSubWindow(child);
    area.show();
    frame->setGeometry(10, 20, 320, 240);
    EXPECT_EQ(Looks::Geometry(child), "10 20 320 240");
    frame->hide();
    EXPECT_THROW(Looks::Geometry(child), Failure);
}

TEST_F(TheLooks, AreTheStopsOfTabInTheirOrder)
{
    auto *first = Add<QLineEdit>("txtFirst");
    auto *date = Add<QDateEdit>("dtpDate");
    auto *combo = Add<QComboBox>("combSymbol");
    combo->setEditable(true);
    auto *skipped = Add<QPushButton>("cmdByMouse");
    skipped->setFocusPolicy(Qt::ClickFocus);
    Add<QLineEdit>("txtHidden")->hide();
    Add<QLineEdit>("txtOff")->setEnabled(false);
    auto *check = Add<QCheckBox>("chkTotals");
    QWidget::setTabOrder(date, first);
    QWidget::setTabOrder(first, check);
    form.show();
    EXPECT_EQ(Looks::TabOrder(&form),
              QStringList({"dtpDate", "txtFirst", "chkTotals", "combSymbol"}));
    Q_UNUSED(combo);
}

TEST_F(TheLooks, AreNotThoseOfWhatIsHidden)
{
    auto *field = Add<QLineEdit>("txtName");
    EXPECT_THROW(Looks::Colors(field), Failure);
    EXPECT_THROW(Looks::Geometry(&form), Failure);
    EXPECT_THROW(Looks::TabOrder(&form), Failure);
}

} // namespace
