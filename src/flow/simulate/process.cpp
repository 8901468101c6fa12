#include "flow/simulate/process.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <ctime>
#include <fstream>
#include <sstream>

namespace xfc::flow {

namespace fs = std::filesystem;

temporary_folder::temporary_folder() {
    std::error_code none;
    std::string wanted = (fs::temp_directory_path(none) / "xfcflow.XXXXXX").string();
    path_ = mkdtemp(wanted.data()) != nullptr ? wanted : "";
}

temporary_folder::~temporary_folder() {
    std::error_code ignored;
    if (!path_.empty()) {
        fs::remove_all(path_, ignored);
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
