#pragma once

/// A window with a form's name, "frmSample", that a test fills with controls.

#include <gtest/gtest.h>

#include <QVBoxLayout>
#include <QWidget>

class SampleForm : public testing::Test
{
protected:
    SampleForm() { form.setObjectName("frmSample"); }

    template <class Control>
    Control *Add(const char *name)
    {
        auto *control = new Control(&form);
        control->setObjectName(name);
        layout->addWidget(control);
        return control;
    }

    QWidget form;
    QVBoxLayout *layout = new QVBoxLayout(&form);
};
