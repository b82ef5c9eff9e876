// What each command of the tool found, as the text printer and the JSON objects tell it.
#ifndef QUORVVALIDA_TOOLS_RESULTADOS_HPP_
#define QUORVVALIDA_TOOLS_RESULTADOS_HPP_

#include <cstdint>
#include <optional>
#include <string>

#include "quorvvalida/falha.hpp"
#include "tipo_arquivo.hpp"

namespace quorv::ferramenta {

// Why a command failed: a short identifier for scripts and one Portuguese sentence for people.
struct Erro {
  std::string tipo;
  std::string mensagem;
};

// A remark on the file that tells a person how to fix it (its encoding, its line ends, its
// kind), besides the warnings, which stay what the library wrote.
struct Diagnostico {
  std::string tipo;
  std::string mensagem;
};

// One validation by Valida_Dados or Valida_Fichas.
struct ResultadoValidacao {
  std::string arquivo;  // as given ("-" for standard input)
  Tipo tipo = Tipo::kNotas;
  int16_t status = 0;
  std::string numeroRemessa;
  std::string diretorio;
  // The warnings file that this run wrote and left; empty when it left none. A file that an
  // earlier run left and this one did not write is never named here.
  std::string caminhoAdvertencias;
  std::string separador = "#";
  std::optional<Diagnostico> diagnostico;
  std::optional<Erro> erro;
  int codigoSaida = 0;
};

// One call of the web facade.
struct ResultadoWeb {
  std::string arquivo;
  std::optional<Tipo> tipo;  // empty when the facade was given a type it does not know
  bool resultado = false;
  std::string numeroRemessa;
  std::string diretorio;
  std::string arquivoRetorno;  // empty when no return file was written
  // The object carries the return file's text, in UTF-8 (a service's answer does).
  bool incluiTextoRetorno = false;
  std::optional<Erro> erro;
  int codigoSaida = 0;
};

// The catalogue's text of a code.
struct ResultadoMensagem {
  Tipo tipo = Tipo::kNotas;
  int codigo = 0;
  std::string mensagem;
  bool conhecido = true;  // false: the catalogue answered its default text
  int codigoSaida = 0;
};

// What a batch of files came to.
struct ResumoLote {
  std::uint64_t arquivos = 0;
  std::uint64_t aceitos = 0;
  std::uint64_t comAdvertencias = 0;
  std::uint64_t comFalha = 0;
  std::uint64_t totalAdvertencias = 0;
  int codigoSaida = 0;
};

// The meaning of a run status for the kind of file.
const char* SignificadoDoStatus(Tipo tipo, int16_t status);

// The identifier of a library failure in the "erro" objects ("escrita_advertencias"...).
const char* TipoDaFalha(Falha falha);

// The exit code of a library failure: an internal failure is the tool's own (4), every other one
// is of input or output (3).
int CodigoDaFalha(Falha falha);

// True when the failure came before the run created its warnings file: a warnings file found
// in the working directory then is not this run's.
bool FalhaAntesDasAdvertencias(Falha falha);

}  // namespace quorv::ferramenta

#endif  // QUORVVALIDA_TOOLS_RESULTADOS_HPP_
