#include "platform/CWnd.h"

#include "platform/Desktop.h"

int CWnd::MessageBox(const CString& text, const CString& caption, unsigned style) {
    return Desktop::current().messageBox(text, caption, style);
}

CWnd* AfxGetMainWnd() {
    static CWnd mainWindow;
    return &mainWindow;
}
