#pragma once

#include "client/prompts.h"

#include <functional>

class QAbstractButton;

namespace orvo {
class db_failure;
}

/// What becomes of a failure inside a handler. Every handler is attached with one of these, and here is the
/// only catch: no exception reaches the event loop.
namespace orvo::failures {

enum class policy {
    report,     ///< tells what failed and lets the operator go on, or end the program
    show_error, ///< the shared error box, by number
    plain_box,  ///< the error's text
    silent      ///< no box; the status bar says that nothing was saved
};

/// What an operator can make of a failure; the engine's own words where there are no better ones.
QString in_words(const db_failure& failure);

/// Runs `handler`; true where it came to its end.
bool guard(prompts& say, policy how, const std::function<void()>& handler);

/// Attaches a handler to a button's click.
void on_click(QAbstractButton* button, prompts& say, policy how, std::function<void()> handler);

} // namespace orvo::failures
