// late_interrupt.so, loaded into Wine's programs before all else: no Ctrl-C comes amid an allocation.
//
// Wine gives Ctrl-C to a program as a signal of its first thread, whose handler starts the thread that
// Windows programs see. To start one takes the heap; where the signal has interrupted an allocation,
// its lock is held by the very thread that now waits for it, for good. On Windows the system starts
// the thread and interrupts none. Here the signal waits for the end of the allocation.
#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <pthread.h>
#include <signal.h>
#include <stddef.h>

void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* block, size_t size);
void* __libc_memalign(size_t alignment, size_t size);
void __libc_free(void* block);

// Of a thread. Read and written by its signal handler as well.
static __thread volatile sig_atomic_t depth __attribute__((tls_model("initial-exec")));
static __thread volatile sig_atomic_t late __attribute__((tls_model("initial-exec")));

static void (*wine_handler)(int, siginfo_t*, void*);

static void enter(void) { ++depth; }

static void leave(void) {
  if (--depth > 0 || !late) return;
  late = 0;
  const int error = errno;
  raise(SIGINT);
  errno = error;
}

static void handle(int number, siginfo_t* info, void* context) {
  if (depth > 0) {
    late = 1;
  } else {
    wine_handler(number, info, context);
  }
}

int sigaction(int number, const struct sigaction* action, struct sigaction* before) {
  static int (*next)(int, const struct sigaction*, struct sigaction*);
  if (next == NULL) next = dlsym(RTLD_NEXT, "sigaction");
  if (number != SIGINT || action == NULL || !(action->sa_flags & SA_SIGINFO)) {
    return next(number, action, before);
  }
  wine_handler = action->sa_sigaction;
  struct sigaction ours = *action;
  ours.sa_sigaction = handle;
  return next(number, &ours, before);
}

void* malloc(size_t size) {
  enter();
  void* block = __libc_malloc(size);
  leave();
  return block;
}

void* calloc(size_t count, size_t size) {
  enter();
  void* block = __libc_calloc(count, size);
  leave();
  return block;
}

void* realloc(void* block, size_t size) {
  enter();
  void* larger = __libc_realloc(block, size);
  leave();
  return larger;
}

void* memalign(size_t alignment, size_t size) {
  enter();
  void* block = __libc_memalign(alignment, size);
  leave();
  return block;
}

void* aligned_alloc(size_t alignment, size_t size) { return memalign(alignment, size); }

int posix_memalign(void** block, size_t alignment, size_t size) {
  if (alignment % sizeof(void*) != 0 || (alignment & (alignment - 1)) != 0 || alignment == 0) {
    return EINVAL;
  }
  void* aligned = memalign(alignment, size);
  if (aligned == NULL) return ENOMEM;
  *block = aligned;
  return 0;
}

void free(void* block) {
  enter();
  __libc_free(block);
  leave();
}

// Has a lock of its own.
int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*start)(void*),
                   void* argument) {
  static int (*next)(pthread_t*, const pthread_attr_t*, void* (*)(void*), void*);
  if (next == NULL) next = dlsym(RTLD_NEXT, "pthread_create");
  enter();
  const int error = next(thread, attributes, start, argument);
  leave();
  return error;
}
