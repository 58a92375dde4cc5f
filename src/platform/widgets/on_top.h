#pragma once

class QWidget;

/// To be called before `dialog` comes up: a window of ours that stays on top of all others does not
/// hide what the user is asked. Nothing happens while there is no such window.
void PutOnTop(QWidget &dialog);
