#pragma once
#include <stddef.h>
#define EXIT_SUCCESS 0
#define EXIT_FAILURE 1
#define RAND_MAX 2147483647
typedef struct {
    int quot, rem;
} div_t;
typedef struct {
    long quot, rem;
} ldiv_t;
static inline int abs(int x) { return x < 0 ? -x : x; }
static inline long labs(long x) { return x < 0 ? -x : x; }
static inline div_t div(int x, int y) {
    div_t both = {x / y, x % y};
    return both;
}
static inline ldiv_t ldiv(long x, long y) {
    ldiv_t both = {x / y, x % y};
    return both;
}
void* malloc(size_t);
void* calloc(size_t, size_t);
void* realloc(void*, size_t);
void free(void*);
void exit(int);
void abort(void);
int rand(void);
void srand(unsigned int);
int atoi(const char*);
double atof(const char*);
double strtod(const char*, char**);
long strtol(const char*, char**, int);
char* getenv(const char*);
