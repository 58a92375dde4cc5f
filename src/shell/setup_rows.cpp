#include "shell/setup_rows.h"

#include <QIntValidator>
#include <QStyle>

namespace SetupRows
{

namespace
{

FieldEdit *Field(QWidget *parent, const char *name, const char *accessibleName, const char *tip,
                 int characters)
{
    auto *field = Named(new FieldEdit(parent), name, accessibleName);
    field->setToolTip(QString::fromUtf8(tip));
    field->setAlignment(Qt::AlignRight);
    field->setFixedWidth(field->fontMetrics().averageCharWidth() * (characters + 3));
    return field;
}

class PageView : public QScrollArea
{
public:
    explicit PageView(QWidget *page)
    {
        setFrameShape(NoFrame);
        setFocusPolicy(Qt::NoFocus);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setWidgetResizable(true);
        setWidget(page);
        page->setAutoFillBackground(false); // the tabs have a ground of their own
        viewport()->setAutoFillBackground(false);
    }
    QSize sizeHint() const override { return widget()->sizeHint(); }
    QSize minimumSizeHint() const override
    {
        const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this);
        constexpr int lines = 8;
        return {widget()->minimumSizeHint().width() + bar, fontMetrics().height() * lines};
    }
};

template <class Button>
Button *Choice(QWidget *parent, const char *name, const char *caption, const char *tip)
{
    auto *button = Named(new Button(QString::fromUtf8(caption), parent), name, caption);
    button->setToolTip(QString::fromUtf8(tip));
    return button;
}

} // namespace

QCheckBox *Check(QWidget *parent, const char *name, const char *caption, const char *tip)
{
    return Choice<QCheckBox>(parent, name, caption, tip);
}

QRadioButton *Option(QWidget *parent, const char *name, const char *caption, const char *tip)
{
    return Choice<QRadioButton>(parent, name, caption, tip);
}

FieldEdit *Number(QWidget *parent, const char *name, const char *accessibleName, const char *tip)
{
    FieldEdit *field = Field(parent, name, accessibleName, tip, 6);
    field->setValidator(new QIntValidator(0, INT16_MAX, field)); // keeps pasted letters out as well
    return field;
}

FieldEdit *Amount(QWidget *parent, const Formats &formats, const char *name,
                  const char *accessibleName, const char *tip, int characters)
{
    FieldEdit *field = Field(parent, name, accessibleName, tip, characters);
    field->SetAllowedKeys(formats.NumberKeys() + QStringLiteral(", -"));
    return field;
}

UpDown *Arrows(FieldEdit *buddy, const char *name, int lowest, int highest)
{
    auto *arrows = new UpDown(*buddy, lowest, highest);
    arrows->setObjectName(QString::fromUtf8(name));
    arrows->setAccessibleName(buddy->accessibleName() + QStringLiteral(": more or less"));
    return arrows;
}

QLabel *Words(QWidget *parent, const char *text)
{
    auto *label = new QLabel(QString::fromUtf8(text), parent);
    label->setTextFormat(Qt::PlainText);
    return label;
}

QLabel *Note(QWidget *parent, const char *text)
{
    QLabel *note = Words(parent, text);
    note->setWordWrap(true);
    return note;
}

QGroupBox *Frame(QWidget *page, const char *caption)
{
    auto *frame = new QGroupBox(QString::fromUtf8(caption), page);
    new QVBoxLayout(frame);
    return frame;
}

QBoxLayout *RowsOf(QGroupBox *frame)
{
    return static_cast<QBoxLayout *>(frame->layout());
}

void Row(QBoxLayout *rows, std::initializer_list<QWidget *> controls)
{
    auto *row = new QHBoxLayout;
    QBoxLayout *place = row;
    for (QWidget *control : controls) {
        if (dynamic_cast<FieldEdit *>(control)) {
            place = new QHBoxLayout;
            place->setSpacing(1);
            row->addLayout(place);
        } else if (!dynamic_cast<UpDown *>(control)) {
            place = row;
        }
        place->addWidget(control);
    }
    row->addStretch();
    rows->addLayout(row);
}

QScrollArea *Scrolled(QWidget *page)
{
    return new PageView(page);
}

} // namespace SetupRows
