#include "shell/frm_splash.h"

#include "platform/widgets/app_icon.h"

#include <QKeyEvent>
#include <QPainter>

#include <chrono>

using namespace std::chrono_literals;

namespace
{

constexpr QSize PictureSize(480, 280);

} // namespace

frmSplash::frmSplash(Program &program)
    : Form(program, QStringLiteral("frmSplash"), ApplicationTitle(), Placement::Dialog)
{
    setWindowFlag(Qt::FramelessWindowHint);
    setWindowModality(Qt::ApplicationModal);
    setAccessibleName(ApplicationTitle());
    setAttribute(Qt::WA_QuitOnClose, false); // the main window is yet to come
}

void frmSplash::Load()
{
    m_picture = AppIcon(m_program.services.programPath, QStringLiteral("splash"))
                    .pixmap(PictureSize, devicePixelRatioF());
    TimerSplash = m_program.services.clock.CreateTimer([this] {
        TimerSplash->SetEnabled(false);
        UnloadMe();
    });
    TimerSplash->SetInterval(2500ms);
    TimerSplash->SetEnabled(true);
}

QSize frmSplash::sizeHint() const
{
    return PictureSize;
}

void frmSplash::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    if (!m_picture.isNull()) {
        painter.drawPixmap(rect(), m_picture);
        return;
    }
    QFont font = painter.font();
    font.setPointSize(36);
    painter.setFont(font);
    painter.drawText(rect(), Qt::AlignCenter, ApplicationTitle());
}

void frmSplash::keyPressEvent(QKeyEvent *event)
{
    event->ignore();
}
