// For LD_PRELOAD: runs a shell command once, before a program's first call of a function. With
// BEFORE_unlink="cp disk copy" in the environment, it runs cp before the first call of unlink.
#define _GNU_SOURCE

#include <dlfcn.h>
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static void* real_after_command(const char* name) {
  char variable[64];
  snprintf(variable, sizeof variable, "BEFORE_%s", name);
  char* command = getenv(variable);
  if (command != NULL) {
    command = strdup(command);  // the variable goes, so that the command runs once
    unsetenv(variable);
    if (system(command) != 0) abort();
    free(command);
  }
  return dlsym(RTLD_NEXT, name);
}

int open(const char* path, int flags, ...) {
  // The library's paths here have no folder; those that its loader opens before have one.
  const int is_ours = strchr(path, '/') == NULL;
  int (*real)(const char*, int, ...) =
      is_ours ? real_after_command("open") : dlsym(RTLD_NEXT, "open");
  va_list rest;
  va_start(rest, flags);
  const int mode = va_arg(rest, int);  // used only if a file is created
  va_end(rest);
  return real(path, flags, mode);
}

int unlink(const char* path) {
  int (*real)(const char*) = real_after_command("unlink");
  return real(path);
}

int unlinkat(int folder, const char* name, int flags) {
  int (*real)(int, const char*, int) = real_after_command("unlinkat");
  return real(folder, name, flags);
}

ssize_t copy_file_range(int in, off_t* at, int out, off_t* to, size_t size, unsigned flags) {
  ssize_t (*real)(int, off_t*, int, off_t*, size_t, unsigned) =
      real_after_command("copy_file_range");
  return real(in, at, out, to, size, flags);
}
