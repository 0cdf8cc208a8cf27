// Runs a command and writes to standard error, in KiB, the most memory that it had at once. The
// system counts what a process held before it became the command, so a small program has to start
// it: one that stands alone, without any library to load.

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>

int main(int argc, char* argv[]) {
    if (argc < 2) {
        std::fputs("Usage: peak_memory COMMAND [ARGUMENT...]\n", stderr);
        return 2;
    }
    const pid_t child = ::fork();
    if (child == 0) {
        ::execvp(argv[1], argv + 1);
        std::perror(argv[1]);
        ::_exit(127);
    }
    int status = 0;
    rusage usage{};
    if (child < 0 || ::wait4(child, &status, 0, &usage) != child) {
        std::perror("peak_memory");
        return 1;
    }
    std::fprintf(stderr, "%ld\n", usage.ru_maxrss);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 1;
}
