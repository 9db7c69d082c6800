/* A process that is killed (SIGKILL) before the so-many-th call by which it changes something in a folder, to be
 * preloaded (LD_PRELOAD) into a program under test.
 *
 *   KILLING_CALLS_BELOW   the folder, an absolute path
 *   KILLING_CALLS_AT      number of the call that isn't made any more, from 1 on; 0 lets all pass
 *   KILLING_CALLS_COUNT   a file that gets the number of calls at the program's end
 */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <fcntl.h>
#include <limits.h>
#include <pthread.h>
#include <signal.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/types.h>
#include <unistd.h>

static pthread_mutex_t lock = PTHREAD_MUTEX_INITIALIZER;
static long calls = 0;

__attribute__((destructor)) static void noteCount(void)
{
    const char* target = getenv("KILLING_CALLS_COUNT");
    char text[32];
    int file;
    if (!target)
        return;
    snprintf(text, sizeof text, "%ld\n", calls);
    file = open(target, O_WRONLY | O_CREAT | O_TRUNC, 0600);
    syscall(SYS_write, file, text, strlen(text));
    close(file);
}

static void countPath(const char* path)
{
    const char* folder = getenv("KILLING_CALLS_BELOW");
    const char* at = getenv("KILLING_CALLS_AT");
    if (!folder || strncmp(path, folder, strlen(folder)) != 0)
        return;
    pthread_mutex_lock(&lock);
    if (++calls == (at ? atol(at) : 0))
        kill(getpid(), SIGKILL);
    pthread_mutex_unlock(&lock);
}

static void countFile(int descriptor)
{
    char link[64];
    char path[PATH_MAX];
    ssize_t length;
    snprintf(link, sizeof link, "/proc/self/fd/%d", descriptor);
    length = readlink(link, path, sizeof path - 1);
    if (length < 0)
        return;
    path[length] = '\0';
    countPath(path);
}

/* From here on what programs call instead of the C library. */
#pragma GCC visibility push(default)

#define REAL(name) ((__typeof__(&name))dlsym(RTLD_NEXT, #name))

ssize_t write(int file, const void* bytes, size_t count)
{
    countFile(file);
    return REAL(write)(file, bytes, count);
}

ssize_t pwrite(int file, const void* bytes, size_t count, off_t at)
{
    countFile(file);
    return REAL(pwrite)(file, bytes, count, at);
}

ssize_t pwrite64(int file, const void* bytes, size_t count, off64_t at)
{
    countFile(file);
    return REAL(pwrite64)(file, bytes, count, at);
}

int fsync(int file)
{
    countFile(file);
    return REAL(fsync)(file);
}

int rename(const char* from, const char* to)
{
    countPath(from);
    return REAL(rename)(from, to);
}

int mkdir(const char* path, mode_t mode)
{
    countPath(path);
    return REAL(mkdir)(path, mode);
}

int rmdir(const char* path)
{
    countPath(path);
    return REAL(rmdir)(path);
}

int unlink(const char* path)
{
    countPath(path);
    return REAL(unlink)(path);
}

int remove(const char* path)
{
    countPath(path);
    return REAL(remove)(path);
}
