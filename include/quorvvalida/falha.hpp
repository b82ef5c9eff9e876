// Falha: why a run could not start or could not finish its output, as the validators and the web
// facade tell it after each call.
#ifndef QUORVVALIDA_FALHA_HPP_
#define QUORVVALIDA_FALHA_HPP_

#include <cstdint>

#include "quorvvalida/exportacao.h"

namespace quorv {

// The numbers are fixed and never reordered: hosts keep them as plain integers.
enum class Falha : int32_t {
  // The run started and wrote all its output.
  Nenhuma = 0,
  // The file to validate is missing, is a directory or cannot be read.
  EntradaInacessivel = 1,
  // The working directory is missing (or names no directory).
  DiretorioInexistente = 2,
  // The file to validate is the working directory's own ADVERTENCIAS.TXT: the run was refused
  // before anything was opened for writing, and the file was left as it was.
  EntradaEhAdvertencias = 3,
  // ADVERTENCIAS.TXT could not be created in the working directory.
  AdvertenciasNaoCriadas = 4,
  // A warning could not be written to ADVERTENCIAS.TXT (a full disk, an I/O error): the file
  // does not hold every warning of the run.
  EscritaAdvertencias = 5,
  // The web facade's return file could not be created.
  RetornoNaoCriado = 6,
  // A write to the web facade's return file failed: the file is incomplete.
  EscritaRetorno = 7,
  // The web facade's return file would be the file to validate, or the warnings file it is made
  // from: the call was refused before anything was validated or written.
  RetornoEhEntrada = 8,
  // Forms: a record whose type is not a number (an empty line, binary data) stopped the run
  // (status 9, bTem_Erro_Grave).
  ErroGrave = 9,
  // A failure from outside the checks (memory, a host's event that throws) ended the run.
  FalhaInterna = 10,
};

// One short Portuguese sentence (UTF-8) that tells the failure; a number outside the list gets a
// sentence that says so.
QUORVVALIDA_API const char* DescricaoDaFalha(Falha falha);

}  // namespace quorv

#endif  // QUORVVALIDA_FALHA_HPP_
