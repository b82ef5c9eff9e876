// The tool's commands, each a thin layer over the library, and how their outcomes are told: one
// JSON object each with --json, else a summary on stdout and one line on stderr per error.
#ifndef QUORVVALIDA_TOOLS_COMANDOS_HPP_
#define QUORVVALIDA_TOOLS_COMANDOS_HPP_

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "json_v1.hpp"
#include "resultados.hpp"
#include "tipo_arquivo.hpp"

namespace quorv::ferramenta {

// Options every command shares.
struct OpcoesGerais {
  bool json = false;
  bool quieto = false;
  std::uint64_t limite = 0;
  std::optional<double> hoje;  // day serial that stands for today
};

// The arguments of Valida_Dados and Valida_Fichas.
struct OpcoesValidacao {
  std::string diretorio = ".";
  double chaveRemessa = 0;
  double chaveProcessamento = 0;
  std::string origem;
  std::string servidor;
  std::string separador = "#";
};

// The files of a validating command.
struct OpcoesLote {
  std::vector<std::string> arquivos;
  bool recursivo = false;
  unsigned tarefas = 1;  // threads
};

// The arguments of the web facade.
struct OpcoesWeb {
  std::string arquivo;
  std::string retorno;
  std::string diretorio = ".";
  std::optional<std::string> tipo;
  std::optional<std::string> tipoArquivo;
  std::optional<std::string> programaChamador;
  // The JSON object carries the return file's text as well (the service does).
  bool incluiTextoRetorno = false;
};

// Tells the outcomes in the format asked for: a JSON object on stdout, or a summary on stdout
// (not with -q) and errors and diagnoses as lines on stderr.
class Relator {
 public:
  explicit Relator(const OpcoesGerais& gerais);
  // The JSON objects go to `escreve` instead of stdout: a host that answers them elsewhere.
  Relator(const OpcoesGerais& gerais, std::function<bool(std::string_view)> escreve);

  const OpcoesGerais& Gerais() const { return gerais_; }
  void Validacao(const ResultadoValidacao& resultado);
  void Web(const ResultadoWeb& resultado);
  void Mensagem(const ResultadoMensagem& resultado);
  void Lote(const ResumoLote& resumo);
  // A command that failed before it had a result; answers the exit code.
  int Falha(const Erro& erro, int codigoSaida, const std::string& arquivo = {});
  // A notice about the environment: on stderr always, whatever the format and -q.
  void Nota(const std::string& texto);
  // The exit code once all is told: a stdout that lost what was written to it is a failure
  // of output (3), told on stderr.
  int Encerra(int codigoSaida);
  json_v1::Escritor& Escritor() { return escritor_; }

 private:
  OpcoesGerais gerais_;
  json_v1::Escritor escritor_;
};

// Validates one file in the working directory given: the library run, its failure, the warnings
// it left (only when this run wrote them) and the diagnosis of a file that fails. `mostrado` is
// the file's name as the user gave it.
ResultadoValidacao ValidaUm(const std::string& mostrado, const std::string& caminho, Tipo tipo,
                            const std::string& diretorio, const OpcoesValidacao& opcoes,
                            const OpcoesGerais& gerais,
                            const std::function<void(double&)>& progresso);

// The validating commands: one file or many (lote.cpp). The kind is given, or told for each file
// by its first line.
int ValidaArquivos(std::optional<Tipo> tipo, const OpcoesValidacao& opcoes, const OpcoesLote& lote,
                   Relator& relator);

// Runs the web facade and reports where its return file went; `saida`, when given, receives
// what was reported (a failure before the facade ran: only its error and exit code).
int ValidaWeb(const OpcoesWeb& opcoes, Relator& relator, ResultadoWeb* saida = nullptr);

// The catalogue's text of a warning code, whether the catalogue holds the code, and the exit code
// that tells it.
ResultadoMensagem BuscaMensagem(Tipo tipo, int codigo);

// Prints the catalogue's text of a warning code.
int MostraMensagem(Tipo tipo, int codigo, Relator& relator);

// Lists a warnings file through the component's reader.
int ListaAdvertencias(Tipo tipo, const std::string& arquivo, Relator& relator);

// The notice of a run of invoices without a state-registration checker.
inline constexpr const char* kSemInscricao =
    "aviso: a biblioteca de inscrição estadual (libDllInscE32.so) não foi encontrada; toda "
    "inscrição estadual de QZ será recusada. Informe-a com --inscricao-lib CAMINHO ou "
    "LD_LIBRARY_PATH.";

// Why a file could not be opened: missing, a directory, or unreadable.
std::string MotivoDaEntrada(const std::string& arquivo);

}  // namespace quorv::ferramenta

#endif  // QUORVVALIDA_TOOLS_COMANDOS_HPP_
