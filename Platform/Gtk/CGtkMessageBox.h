// CGtkMessageBox: messages to the user as GTK dialogs over the program's active window, with the
// buttons and icon the type asks for. Only the thread that runs GTK may show one; another thread's
// message waits until that thread has shown it.
#pragma once

#include "Platform/MessageBox.h"

class CGtkMessageBox final : public IMessageBoxService
{
public:
    int Show(const CString& csText, UINT nType) override;
};
