#pragma once

// A dialog of the test plug-in (command qvhstubborn) that behaves as a dialog
// whose store keeps failing: cancelling asks "是否保存设置修改?", and Yes tries a
// save that always fails, so the dialog stays open. Button 1001 asks "再试一次?"
// until it is told No; button 1002 makes it ignore every cancel from then on.
#include <QDialog>

class StubbornDialog : public QDialog
{
public:
    StubbornDialog();

    void reject() override;

private:
    void Retry();

    bool m_stuck = false;
};
