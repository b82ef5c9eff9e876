// What an operator sets when starting the validation service.
#ifndef QUORVVALIDA_TOOLS_SERVIR_CONFIGURACAO_HPP_
#define QUORVVALIDA_TOOLS_SERVIR_CONFIGURACAO_HPP_

#include <cstddef>
#include <cstdint>
#include <string>

namespace quorv::servico {

struct Configuracao {
  std::string endereco = "127.0.0.1";
  int porta = 8080;  // 0: a free port, printed on stdout as the first line
  // Validations at once (one per processor unless told); at most `fila` more requests are
  // admitted behind them, then the service answers 503.
  std::size_t trabalhadores = 1;
  std::size_t fila = 4;
  std::uint64_t limiteCorpo = 512ull * 1024 * 1024;
  // A request body must keep arriving: the wait for any one piece is bounded, and so is the
  // whole body, by a base time plus one second for every `taxaMinima` bytes received. The same
  // holds for a response being sent.
  double tempoLeitura = 20;
  double tempoEscrita = 20;
  std::uint64_t taxaMinima = std::uint64_t{64} * 1024;
  // Where each request gets its private working directory, and the browser page served at "/":
  // absolute paths.
  std::string diretorioTemporario;
  std::string pagina;
  // A file holding the bearer token every request to the API must carry (empty: no token).
  std::string tokenArquivo;
  std::string inscricaoLib;
  bool semVerificarInscricao = false;
};

}  // namespace quorv::servico

#endif  // QUORVVALIDA_TOOLS_SERVIR_CONFIGURACAO_HPP_
