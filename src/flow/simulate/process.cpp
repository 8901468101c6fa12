#include "flow/simulate/process.h"

#include <fcntl.h>
#include <pthread.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <sstream>

namespace xfc::flow {

namespace fs = std::filesystem;

namespace {

/// What an interrupted process leaves behind: a few at a time, in places that a signal's handler may read. What finds
/// no free place is left alone.
template <class thing>
class left_behind {
public:
    void add(thing one) {
        for (std::atomic<thing>& place : places_) {
            thing nothing{};
            if (place.compare_exchange_strong(nothing, one)) {
                return;
            }
        }
    }
    void remove(thing one) {
        for (std::atomic<thing>& place : places_) {
            thing known = one;
            place.compare_exchange_strong(known, thing{});
        }
    }
    template <class action>
    void take_each(action act) {
        for (std::atomic<thing>& place : places_) {
            if (const thing one = place.exchange(thing{}); one != thing{}) {
                act(one);
            }
        }
    }

private:
    std::array<std::atomic<thing>, 16> places_{};
};

left_behind<pid_t> running;             // each leads a group of its own
left_behind<const char*> open_folders;  // paths

/// Ends what runs, removes the folders and dies of the signal. Calls only what a signal's handler may.
void end_by(int signal) {
    running.take_each([](pid_t child) {
        kill(-child, SIGKILL);
        waitpid(child, nullptr, 0);
    });
    open_folders.take_each([](const char* folder) {
        const pid_t child = fork();
        if (child == 0) {
            execl("/bin/rm", "rm", "-rf", folder, static_cast<char*>(nullptr));
            _exit(127);
        }
        if (child > 0) {
            waitpid(child, nullptr, 0);
        }
    });
    (void)std::signal(signal, SIG_DFL);
    (void)raise(signal);
}

/// What a process has begun is none of those that are forked off it.
void forget() {
    running.take_each([](pid_t) {});
    open_folders.take_each([](const char*) {});
}

/// Once; a signal that is ignored, as nohup has it, stays so.
void clean_up_when_interrupted() {
    static const bool done = [] {
        pthread_atfork(nullptr, nullptr, forget);
        for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT}) {
            struct sigaction now = {};
            if (sigaction(signal, nullptr, &now) == 0 && now.sa_handler == SIG_DFL) {
                now.sa_handler = end_by;
                sigfillset(&now.sa_mask);
                sigaction(signal, &now, nullptr);
            }
        }
        return true;
    }();
    (void)done;
}

}  // namespace

temporary_folder::temporary_folder() {
    clean_up_when_interrupted();
    std::error_code none;
    std::string wanted = (fs::temp_directory_path(none) / "xfcflow.XXXXXX").string();
    path_ = mkdtemp(wanted.data()) != nullptr ? wanted : "";
    if (!path_.empty()) {
        open_folders.add(path_.c_str());
    }
}

temporary_folder::~temporary_folder() {
    std::error_code ignored;
    if (!path_.empty()) {
        fs::remove_all(path_, ignored);
        open_folders.remove(path_.c_str());
    }
}

bool is_on_path(std::string_view program) {
    const char* path = std::getenv("PATH");
    std::istringstream folders(path == nullptr ? "" : path);
    for (std::string folder; std::getline(folders, folder, ':');) {
        if (access((folder + "/" + std::string(program)).c_str(), X_OK) == 0) {
            return true;
        }
    }
    return false;
}

int run_command(const std::vector<std::string>& words, const fs::path& folder, const std::function<void()>& meanwhile) {
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (const std::string& word : words) {
        arguments.push_back(const_cast<char*>(word.c_str()));  // NOLINT: exec takes what it does not change
    }
    arguments.push_back(nullptr);
    const std::string place = folder.string();
    const pid_t child = fork();
    if (child == 0) {
        setpgid(0, 0);
        const int log = chdir(place.c_str()) == 0 ? open("run.log", O_CREAT | O_WRONLY | O_TRUNC, 0644) : -1;
        const int nothing = open("/dev/null", O_RDONLY);
        if (log >= 0 && nothing >= 0 && dup2(nothing, STDIN_FILENO) >= 0 && dup2(log, STDOUT_FILENO) >= 0 &&
            dup2(log, STDERR_FILENO) >= 0) {
            execvp(arguments[0], arguments.data());
        }
        _exit(127);
    }
    if (child < 0) {
        return -1;
    }
    setpgid(child, child);  // whoever comes first, this process or the child
    running.add(child);
    int status = 0;
    pid_t ended = 0;
    while (meanwhile && (ended = waitpid(child, &status, WNOHANG)) == 0) {
        const timespec pause{.tv_sec = 0, .tv_nsec = 20'000'000};
        nanosleep(&pause, nullptr);
        meanwhile();
    }
    if (!meanwhile) {
        ended = waitpid(child, &status, 0);
    }
    running.remove(child);
    return ended == child && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

std::string end_of_log(const fs::path& folder) {
    constexpr std::size_t most = 1500;
    const std::string all = read_file(folder / "run.log");
    return all.size() > most ? "..." + all.substr(all.size() - most) : all;
}

std::string read_file(const fs::path& path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

}  // namespace xfc::flow
