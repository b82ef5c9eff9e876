// The query parameters of the validating routes: the optional arguments of the validators and
// of the web facade, and the day that counts as today.
#ifndef QUORVVALIDA_TOOLS_SERVIR_PARAMETROS_HPP_
#define QUORVVALIDA_TOOLS_SERVIR_PARAMETROS_HPP_

#include <map>
#include <optional>
#include <string>

#include "rotas.hpp"

namespace quorv::servico {

struct Parametros {
  // Valida_Dados and Valida_Fichas.
  double chaveRemessa = 0;
  double chaveProcessamento = 0;
  std::string origem;
  std::string servidor;
  std::string separador = "#";
  // The web facade.
  std::optional<std::string> programaChamador;
  std::optional<std::string> tipoArquivo;
  // Day serial that stands for today.
  std::optional<double> hoje;
};

// Reads the parameters a route takes; the reason, in Portuguese, when one is unknown, given
// twice or not valid (nothing when all is well).
std::optional<std::string> LeParametros(const std::multimap<std::string, std::string>& consulta,
                                        Destino destino, Parametros& parametros);

}  // namespace quorv::servico

#endif  // QUORVVALIDA_TOOLS_SERVIR_PARAMETROS_HPP_
