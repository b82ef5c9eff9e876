// The tool's commands, each a thin layer over the library.
#ifndef QUORVVALIDA_TOOLS_COMANDOS_HPP_
#define QUORVVALIDA_TOOLS_COMANDOS_HPP_

#include <cstdint>
#include <optional>
#include <string>

#include "tipo_arquivo.hpp"

namespace quorv::ferramenta {

// Exit codes: how the component's callers judge a run.
inline constexpr int kSemAdvertencias = 0;  // no warnings file remains
inline constexpr int kComAdvertencias = 1;  // warnings were recorded
inline constexpr int kNaoValidado = 2;      // status 9, a missing file, a usage error

// Options every command shares.
struct OpcoesGerais {
  bool json = false;
  bool quieto = false;
  std::uint64_t limite = 0;
  std::optional<double> hoje;  // day serial that stands for today
};

// The arguments of Valida_Dados and Valida_Fichas.
struct OpcoesValidacao {
  std::string arquivo;
  std::string diretorio = ".";
  double chaveRemessa = 0;
  double chaveProcessamento = 0;
  std::string origem;
  std::string servidor;
  std::string separador = "#";
};

// The arguments of the web facade.
struct OpcoesWeb {
  std::string arquivo;
  std::string retorno;
  std::string diretorio = ".";
  std::optional<std::string> tipo;
  std::optional<std::string> tipoArquivo;
  std::optional<std::string> programaChamador;
};

// Validates a file of the kind given, or of the kind its first line tells.
int ValidaArquivo(std::optional<Tipo> tipo, const OpcoesValidacao& opcoes,
                  const OpcoesGerais& gerais);

// Runs the web facade and reports where its return file went.
int ValidaWeb(const OpcoesWeb& opcoes, const OpcoesGerais& gerais);

// Prints the catalogue's text of a warning code.
int MostraMensagem(Tipo tipo, const std::string& codigo, const OpcoesGerais& gerais);

// Lists a warnings file through the component's reader.
int ListaAdvertencias(Tipo tipo, const std::string& arquivo, const OpcoesGerais& gerais);

// Prints an error of the tool on stderr ("quorvvalida: ...").
void Erro(const std::string& mensagem);

}  // namespace quorv::ferramenta

#endif  // QUORVVALIDA_TOOLS_COMANDOS_HPP_
