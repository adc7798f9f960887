#pragma once

#include "base/for_owner_alone.h"
#include "shell/openers.h"

#include <QStringList>

#include <functional>
#include <memory>

class QLockFile;

namespace orvo {

class client;
class code_refresh;
class main_frm;
class patience;
class window_prompts;

/// The steps of the start that differ between the program, the tour and the tests.
struct start_steps {
    /// Asks for a newer version; false: the program ends in favour of the update. Left out with "re_execute".
    std::function<bool()> check_version = [] { return true; };
};

/// A running program: what lives from the start to the end of `main`.
class program {
public:
    program();
    ~program();

    /// Refuses a second instance, checks the version, opens the connections, logs in. False: the program is
    /// to end. `arguments` are those of the command line, without the program's name.
    bool start(const QStringList& arguments, const start_steps& steps = {});

    client& running_client() { return *client_; }
    main_frm& window() { return *window_; }

private:
    const for_owner_alone all_it_writes_;
    std::unique_ptr<window_prompts> say_;
    std::unique_ptr<patience> patience_;
    std::unique_ptr<QLockFile> instance_;
    std::unique_ptr<client> client_;
    std::unique_ptr<main_frm> window_;
    std::unique_ptr<code_refresh> code_refresh_;

    bool is_first_instance(const QString& folder);
    bool open_connections();
    bool mend_local_file();
};

/// Whether the command line, trimmed, is the one by which the update program starts the client anew.
bool is_re_execute(const QStringList& arguments);

} // namespace orvo
