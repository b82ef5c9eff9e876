/* An example state-registration library, for the tests, the samples and the benchmark: the
   treasury's own library is closed. It accepts a number for the UF "QZ" when all its characters
   are digits and the last digit is the sum of the others modulo 10, and refuses everything else.
   It is never installed. */
#include <stdint.h>
#include <string.h>

#ifdef _WIN32
#define EXPORTA __declspec(dllexport)
#define CHAMADA __stdcall
#else
#define EXPORTA __attribute__((visibility("default")))
#define CHAMADA
#endif

EXPORTA int16_t CHAMADA ConsisteInscricaoEstadual(const char* inscricao, const char* uf) {
  size_t tamanho = strlen(inscricao);
  int soma = 0;
  size_t i;
  if (strcmp(uf, "QZ") != 0 || tamanho < 2) return 1;
  for (i = 0; i < tamanho; ++i) {
    if (inscricao[i] < '0' || inscricao[i] > '9') return 1;
    if (i + 1 < tamanho) soma += inscricao[i] - '0';
  }
  return (int16_t)(inscricao[tamanho - 1] - '0' == soma % 10 ? 0 : 1);
}
