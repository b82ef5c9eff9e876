/* QUORVVALIDA_API marks what the library shows to its hosts: the public classes, the functions of
   the C++ contract and the C functions. Everything else stays inside the library, so that its
   private pieces can change without breaking a host built against an earlier version.

   - Static library (QUORVVALIDA_STATIC, which the build passes to whoever links it): the code
     becomes part of the host's own program or DLL, with nothing to export or import.
   - Windows DLL: exported while the library itself is built (QUORVVALIDA_CONSTRUINDO), imported
     by everyone else.
   - ELF shared library: the library is compiled with hidden visibility, and the marked names
     alone are given the default one. */
#ifndef QUORVVALIDA_EXPORTACAO_H_
#define QUORVVALIDA_EXPORTACAO_H_

#if defined(QUORVVALIDA_STATIC)
#define QUORVVALIDA_API
#elif defined(_WIN32) || defined(__CYGWIN__)
#if defined(QUORVVALIDA_CONSTRUINDO)
#define QUORVVALIDA_API __declspec(dllexport)
#else
#define QUORVVALIDA_API __declspec(dllimport)
#endif
#elif defined(__GNUC__)
#define QUORVVALIDA_API __attribute__((visibility("default")))
#else
#define QUORVVALIDA_API
#endif

#endif /* QUORVVALIDA_EXPORTACAO_H_ */
