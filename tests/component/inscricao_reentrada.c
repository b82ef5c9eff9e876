/* A state-registration library that notices when it is called from two threads at once: every
   call stays inside for a while, and a call that finds another one inside counts an overlap.
   Its rule is the example library's (digits, the last one the sum of the others modulo 10). */
#include <stdatomic.h>
#include <stdint.h>
#include <string.h>
#include <time.h>

#define EXPORTA __attribute__((visibility("default")))

static atomic_int dentro;
static atomic_long chamadas;
static atomic_long sobreposicoes;

EXPORTA int16_t ConsisteInscricaoEstadual(const char* inscricao, const char* uf) {
  const struct timespec espera = {0, 20000};
  size_t tamanho = strlen(inscricao);
  int soma = 0;
  size_t i;
  int16_t resposta = 0;
  if (atomic_fetch_add(&dentro, 1) != 0) atomic_fetch_add(&sobreposicoes, 1);
  atomic_fetch_add(&chamadas, 1);
  nanosleep(&espera, NULL);
  if (strcmp(uf, "QZ") != 0 || tamanho < 2) resposta = 1;
  for (i = 0; resposta == 0 && i < tamanho; ++i) {
    if (inscricao[i] < '0' || inscricao[i] > '9') resposta = 1;
    if (i + 1 < tamanho) soma += inscricao[i] - '0';
  }
  if (resposta == 0 && inscricao[tamanho - 1] - '0' != soma % 10) resposta = 1;
  atomic_fetch_sub(&dentro, 1);
  return resposta;
}

EXPORTA long QuorvChamadas(void) {
  return atomic_load(&chamadas);
}

EXPORTA long QuorvSobreposicoes(void) {
  return atomic_load(&sobreposicoes);
}
