#include "program/progress_display.h"

#include "program/form.h"

namespace
{

const QString ProgressForm = QStringLiteral("frmProgressBar");

ProgressDisplay *OpenDisplay(Program &program)
{
    return dynamic_cast<ProgressDisplay *>(program.screens.Find(ProgressForm));
}

} // namespace

void ShowProgressBar(Program &program, const QString &text, int first, int last)
{
    program.screens.Load(ProgressForm); // the text is there before the window is
    if (ProgressDisplay *display = OpenDisplay(program))
        display->ShowProgress(text, first, last);
    program.screens.Show(ProgressForm);
}

void MoveProgressBar(Program &program, int value)
{
    if (ProgressDisplay *display = OpenDisplay(program))
        display->MoveProgress(value);
}
