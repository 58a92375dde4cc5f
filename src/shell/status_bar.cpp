#include "shell/status_bar.h"

#include "platform/widgets/colors.h"

#include <QEvent>
#include <QIcon>
#include <QLabel>

#include <algorithm>

namespace
{

constexpr int MessagePanel = 1;
constexpr int LogoffPanel = 2;
constexpr int LastUpdatePanel = 3;
constexpr int PicturePanel = 4;
constexpr int UpdatePanel = 5;

constexpr int PictureSide = 16;

/// Nothing for a state that leaves the picture alone.
QString PictureOf(int connectionState)
{
    switch (connectionState) {
    case 1:
        return QStringLiteral("Connecting.bmp");
    case 2:
        return QStringLiteral("ConnStablished.bmp");
    case 3:
        return QStringLiteral("ConnDisabled.bmp");
    case 4:
        return QStringLiteral("ConnError.bmp");
    default:
        return QString();
    }
}

/// What the picture says, for those who cannot see it.
QString MeaningOf(int connectionState)
{
    switch (connectionState) {
    case 1:
        return QStringLiteral("Connecting");
    case 2:
        return QStringLiteral("Connection established");
    case 3:
        return QStringLiteral("Connection disabled");
    default:
        return QStringLiteral("Connection error");
    }
}

QString Minutes(const QString &before, int minutes)
{
    return QStringLiteral("%1%2 minutes").arg(before).arg(minutes);
}

/// Holds the message. A label asks for a new layout with each text, up to the main window, which is
/// painted for it; here the label has no layout around it, and only itself to paint.
class MessagePlace : public QWidget
{
public:
    MessagePlace(QLabel *message, QWidget *parent) : QWidget(parent), m_message(message)
    {
        // A long message is cut rather than widening the window, but always has a place.
        setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        setMinimumWidth(message->fontMetrics().averageCharWidth() * 24);
        message->setParent(this);
    }
    QSize sizeHint() const override { return {minimumWidth(), m_message->sizeHint().height()}; }

protected:
    void resizeEvent(QResizeEvent *) override { m_message->setGeometry(rect()); }

private:
    QLabel *m_message;
};

} // namespace

StatusPanels::StatusPanels()
{
    static const char *const names[] = {"Message", "Logoff", "Last price update",
                                        "State of the connection", "Price update"};
    setObjectName(QStringLiteral("MDIStatusBar"));
    for (int i = 0; i < int(m_panels.size()); ++i) {
        QLabel *panel = m_panels[size_t(i)] = new QLabel(this);
        panel->setObjectName(QStringLiteral("MDIStatusBar%1").arg(i + 1));
        panel->setAccessibleName(QString::fromUtf8(names[i]));
        panel->setTextFormat(Qt::PlainText);
        if (i + 1 == MessagePanel)
            addPermanentWidget(new MessagePlace(panel, this), 1);
        else
            addPermanentWidget(panel);
    }
    ApplyColors();
}

void StatusPanels::ApplyColors()
{
    // What is off is said to be read; a desktop's grey for controls that cannot be used is too faint.
    const QColor dimmed = Dimmed(palette().color(QPalette::Active, QPalette::Window),
                                 palette().color(QPalette::Active, QPalette::WindowText));
    if (palette().color(QPalette::Disabled, QPalette::WindowText) == dimmed)
        return;
    QPalette colors; // the others stay the desktop's
    colors.setColor(QPalette::Disabled, QPalette::WindowText, dimmed);
    setPalette(colors);
}

void StatusPanels::changeEvent(QEvent *event)
{
    QStatusBar::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        ApplyColors();
}

void StatusPanels::Update(const Program &program, const QString &gStatusMessage)
{
    const AccountState &account = program.account;
    SetPanel(MessagePanel, gStatusMessage, true);
    m_panels[MessagePanel - 1]->setToolTip(gStatusMessage); // in full where it is cut

    if (account.LogoffEnabled != 1)
        SetPanel(LogoffPanel, QStringLiteral("Logoff disabled"), false);
    else
        SetPanel(
            LogoffPanel,
            Minutes(QStringLiteral("Logoff in: "), account.LogoffMinutes - program.run.IdleMinutes),
            true);

    SetPanel(LastUpdatePanel,
             QStringLiteral("Last update: ") +
                 program.services.formats.ToText(account.LastPriceUpdate),
             true);

    ShowConnectionState(program.priceUpdate.ConnectionState, program.services.appPath);

    if (!program.priceUpdate.PriceUpdateActive)
        SetPanel(UpdatePanel, QStringLiteral("Price update disabled"), false);
    else
        SetPanel(UpdatePanel,
                 Minutes(QStringLiteral("Update in: "),
                         account.WebUpdateMinutes.Value() -
                             program.priceUpdate.MinutesSinceUpdate.Value()),
                 true);
}

void StatusPanels::ShowConnectionState(int state, const QString &appPath)
{
    const QString file = PictureOf(state);
    if (file.isEmpty() || file == m_pictureFile)
        return;
    QLabel *panel = m_panels[PicturePanel - 1];
    // Bitmaps are finer than their place, for screens of a high resolution.
    const int side = std::max(PictureSide, fontMetrics().height());
    QIcon &picture = m_pictures[file];
    if (picture.isNull())
        picture = QIcon(appPath + QLatin1Char('/') + file);
    panel->setPixmap(picture.pixmap(QSize(side, side), panel->devicePixelRatioF()));
    panel->setFixedSize(panel->sizeHint()); // with the same size the bar is not laid out anew
    panel->setToolTip(MeaningOf(state));
    m_pictureFile = file;
}

void StatusPanels::SetPanel(int panel, const QString &text, bool enabled)
{
    QLabel *label = m_panels[size_t(panel - 1)];
    label->setText(text);
    label->setAccessibleDescription(text); // beside the name that says what it is
    label->setEnabled(enabled);
}

QString StatusPanels::PanelText(int panel) const
{
    return panel == PicturePanel ? m_pictureFile : m_panels.at(size_t(panel - 1))->text();
}

bool StatusPanels::PanelEnabled(int panel) const
{
    return m_panels.at(size_t(panel - 1))->isEnabledTo(this);
}
