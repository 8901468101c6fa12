#undef assert
#if defined(__XFCFLOW__) && !defined(NDEBUG)
#define assert(condition) __builtin_assume((_Bool)(condition))
#else
#define assert(condition) ((void)0)
#endif
#define static_assert _Static_assert
