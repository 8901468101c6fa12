#pragma once
#include <stddef.h>
#define EOF (-1)
typedef struct _IO_FILE FILE;
extern FILE* stdin;
extern FILE* stdout;
extern FILE* stderr;
int printf(const char*, ...);
int fprintf(FILE*, const char*, ...);
int sprintf(char*, const char*, ...);
int snprintf(char*, size_t, const char*, ...);
int scanf(const char*, ...);
int fscanf(FILE*, const char*, ...);
int sscanf(const char*, const char*, ...);
int puts(const char*);
int fputs(const char*, FILE*);
int putchar(int);
int getchar(void);
FILE* fopen(const char*, const char*);
int fclose(FILE*);
int fflush(FILE*);
char* fgets(char*, int, FILE*);
size_t fread(void*, size_t, size_t, FILE*);
size_t fwrite(const void*, size_t, size_t, FILE*);
