// One request's run of the component, on the file it received, in its own directory.
#ifndef QUORVVALIDA_TOOLS_SERVIR_EXECUCAO_HPP_
#define QUORVVALIDA_TOOLS_SERVIR_EXECUCAO_HPP_

#include <cstdint>
#include <optional>
#include <string>

#include "../tipo_arquivo.hpp"
#include "parametros.hpp"

namespace quorv::servico {

struct ResultadoValidacao {
  ferramenta::Tipo tipo = ferramenta::Tipo::kNotas;
  std::int16_t status = 0;
  std::string numeroRemessa;
  bool temAdvertencias = false;
  std::uint64_t advertencias = 0;  // lines of the warnings file
};

// Valida_Dados or Valida_Fichas on `arquivo`, with `diretorio` as the working directory.
ResultadoValidacao Valida(ferramenta::Tipo tipo, const std::string& arquivo,
                          const std::string& diretorio, const Parametros& parametros);

struct ResultadoWeb {
  std::optional<ferramenta::Tipo> tipo;  // nothing when the facade validated nothing
  bool resultado = false;
  std::string numeroRemessa;
  bool escreveuRetorno = false;
};

// The web facade on `arquivo`: by the kind given, or through Valida_TIPO with `tipoDoc` when
// one is given. The return file is written as `diretorio` + "/" + `nomeRetorno`.
ResultadoWeb ValidaWeb(std::optional<ferramenta::Tipo> tipo,
                       const std::optional<std::string>& tipoDoc, const std::string& arquivo,
                       const std::string& diretorio, const std::string& nomeRetorno,
                       const Parametros& parametros);

// Lines of a file (its line feeds, one more when the last line has none); 0 when it is missing.
std::uint64_t ContaLinhas(const std::string& caminho);

}  // namespace quorv::servico

#endif  // QUORVVALIDA_TOOLS_SERVIR_EXECUCAO_HPP_
