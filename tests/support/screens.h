#pragma once

#include <QObject>

#include <stdexcept>

class QWidget;

namespace orvo {

/// Runs the tests of a class in an application that is dressed like the program.
int run_screen_tests(QObject& tests, int argc, char** argv);

/// Shows a window at that size and waits until it hears the keyboard.
void bring_up(QWidget& window, int width = 0, int height = 0);

/// Keys on whatever field has the focus: Enter, Tab, Down and Delete as E, T, D and X, others as they are.
void press_keys(const QWidget& window, const QString& keys);

/// What a field, list, check box or label shows; a checked box or option is "1".
QString shown_by(const QObject& one);

/// The control of that name and kind. Throws where there is none, which ends the test program.
template <typename kind>
kind& control(const QObject& of, const char* name)
{
    auto* found = of.findChild<kind*>(QString::fromLatin1(name));
    if (!found)
        throw std::logic_error{std::string{"there is no "} + name};
    return *found;
}

} // namespace orvo

#define ORVO_SCREEN_TESTS(test_class)                                                                        \
    int main(int argc, char** argv)                                                                          \
    {                                                                                                        \
        test_class tests;                                                                                    \
        return orvo::run_screen_tests(tests, argc, argv);                                                    \
    }
