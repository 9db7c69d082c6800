/* A disk that fails, to be preloaded (LD_PRELOAD) into a program under test: the so-many-th write of a program to a
 * folder fails with a given error. Writes to anything else are let through and not counted.
 *
 *   FAILING_WRITES_BELOW   the folder, an absolute path
 *   FAILING_WRITES_AT      number of the call that fails, from 1 on
 *   FAILING_WRITES_ERRNO   its error
 *   FAILING_WRITES_STAY    if set, every later one fails as well, as on a full disk
 *   FAILING_WRITES_KILL    if set, the program is killed (SIGKILL) in place of that call, and calls that change a
 *                          folder or sync count as well
 *   FAILING_WRITES_NOTE    a file that is made when the call fails; it holds the call and the file's path. At the
 *                          program's end a second one, of this name and ".count", holds the number of calls
 */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <pthread.h>
#include <signal.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/types.h>
#include <unistd.h>

static pthread_mutex_t lock = PTHREAD_MUTEX_INITIALIZER;
static long calls = 0;

static long number(const char* variable)
{
    const char* text = getenv(variable);
    return text ? atol(text) : 0;
}

/* Appends to a file without passing through the calls below. */
static void append(const char* path, const char* text)
{
    const int file = open(path, O_WRONLY | O_CREAT | O_APPEND, 0600);
    syscall(SYS_write, file, text, strlen(text));
    close(file);
}

static void note(const char* call, const char* path)
{
    const char* target = getenv("FAILING_WRITES_NOTE");
    char text[4200];
    if (!target)
        return;
    snprintf(text, sizeof text, "%s %s\n", call, path);
    append(target, text);
}

__attribute__((destructor)) static void noteCount(void)
{
    const char* target = getenv("FAILING_WRITES_NOTE");
    char path[4096];
    char text[32];
    if (!target)
        return;
    snprintf(path, sizeof path, "%s.count", target);
    snprintf(text, sizeof text, "%ld\n", calls);
    append(path, text);
}

/* Whether this call is one that fails; errno is set then. */
static int failsAt(const char* call, const char* path)
{
    const char* folder = getenv("FAILING_WRITES_BELOW");
    const long at = number("FAILING_WRITES_AT");
    int isFailing;
    if (!folder || strncmp(path, folder, strlen(folder)) != 0)
        return 0;
    pthread_mutex_lock(&lock);
    ++calls;
    isFailing = calls == at || (at > 0 && calls > at && getenv("FAILING_WRITES_STAY") != NULL);
    if (isFailing && getenv("FAILING_WRITES_KILL"))
        kill(getpid(), SIGKILL);
    if (isFailing)
        note(call, path);
    pthread_mutex_unlock(&lock);
    if (isFailing)
        errno = (int)number("FAILING_WRITES_ERRNO");
    return isFailing;
}

static int fails(const char* call, int descriptor)
{
    char link[64];
    char path[4096];
    ssize_t length;
    snprintf(link, sizeof link, "/proc/self/fd/%d", descriptor);
    length = readlink(link, path, sizeof path - 1);
    if (length < 0)
        return 0;
    path[length] = '\0';
    return failsAt(call, path);
}

/* Where programs are killed these are moments too; none of them fails. */
static void pass(const char* call, const char* path)
{
    if (getenv("FAILING_WRITES_KILL"))
        failsAt(call, path);
}

/* From here on what programs call instead of the C library. */
#pragma GCC visibility push(default)

#define REAL(name) ((__typeof__(&name))dlsym(RTLD_NEXT, #name))

ssize_t write(int file, const void* bytes, size_t count)
{
    return fails("write", file) ? -1 : REAL(write)(file, bytes, count);
}

ssize_t pwrite(int file, const void* bytes, size_t count, off_t at)
{
    return fails("pwrite", file) ? -1 : REAL(pwrite)(file, bytes, count, at);
}

ssize_t pwrite64(int file, const void* bytes, size_t count, off64_t at)
{
    return fails("pwrite", file) ? -1 : REAL(pwrite64)(file, bytes, count, at);
}

ssize_t sendfile(int to, int from, off_t* at, size_t count)
{
    return fails("sendfile", to) ? -1 : REAL(sendfile)(to, from, at, count);
}

ssize_t sendfile64(int to, int from, off64_t* at, size_t count)
{
    return fails("sendfile", to) ? -1 : REAL(sendfile64)(to, from, at, count);
}

int ftruncate(int file, off_t size) { return fails("ftruncate", file) ? -1 : REAL(ftruncate)(file, size); }

int ftruncate64(int file, off64_t size) { return fails("ftruncate", file) ? -1 : REAL(ftruncate64)(file, size); }

int fsync(int file)
{
    if (getenv("FAILING_WRITES_KILL"))
        fails("fsync", file);
    return REAL(fsync)(file);
}

int rename(const char* from, const char* to) { return pass("rename", from), REAL(rename)(from, to); }

int mkdir(const char* path, mode_t mode) { return pass("mkdir", path), REAL(mkdir)(path, mode); }

int rmdir(const char* path) { return pass("rmdir", path), REAL(rmdir)(path); }

int unlink(const char* path) { return pass("unlink", path), REAL(unlink)(path); }

int remove(const char* path) { return pass("remove", path), REAL(remove)(path); }
