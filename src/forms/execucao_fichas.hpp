// The state of the registration-form runs of one ValidacaoFichaCadastral object, and the run.
#ifndef QUORVVALIDA_SRC_FORMS_EXECUCAO_FICHAS_HPP_
#define QUORVVALIDA_SRC_FORMS_EXECUCAO_FICHAS_HPP_

#include <cstdint>
#include <string>
#include <string_view>

#include "component/files/arquivo_saida.hpp"
#include "component/files/leitor_linhas.hpp"
#include "component/files/linha_advertencia.hpp"
#include "forms/estado_solicitacao.hpp"
#include "quorvvalida/falha.hpp"

namespace quorv {
class ValidacaoFichaCadastral;
}

namespace quorv::fichas {

// Width of every line of a form file.
inline constexpr std::size_t kLargura = 260;

// Arguments of a run as Valida_Fichas receives them (UTF-8 texts).
struct ArgumentosFichas {
  std::string arquivo;
  std::string diretorio;
  double chaveRemessa = 0;
  double chaveProcessamento = 0;
  std::string origem;
  std::string nomeServidor;
  std::string separador;
};

class ExecucaoFichas;

// A record handler: takes the record (the current 260-character line) and answers false when
// it refused it.
using Tratador = bool (*)(ExecucaoFichas& execucao, std::string_view registro);

class ExecucaoFichas {
 public:
  // Runs one file for its owner, whose public fields the run fills, and returns the status.
  // numeroRemessa receives the owner's sNumeroRemessaRef once the file has been read.
  int16_t Executa(ValidacaoFichaCadastral& dono, const ArgumentosFichas& argumentos,
                  std::string& numeroRemessa);

  // Writes a warning against the current line, numbered dLINHA, or from the line's columns 1-8
  // when dLINHA is 0; false when the line could not be written.
  bool Gravar_Erro_Ficha(int32_t lCodErro, double dLINHA);
  // The same against the last TR 110 line this object read.
  bool Gravar_Erro_FichaTR110(int32_t lCodErro, double dLINHA);
  // Closes the run's files and, when no warning was written, deletes the warnings file of the
  // directory given. Safe to call again; always answers false.
  bool Procedimentos_Finais_Fichas(std::string_view diretorio);

  // Why the last run could not start or could not finish its output; Nenhuma before any run.
  Falha UltimaFalha() const { return falha_; }
  // Tells a failure that the run itself could not see (one that escaped it).
  void DefineFalha(Falha falha) { falha_ = falha; }

  // Writes a warning against the current line numbered with the line counter, as every
  // handler and record check does.
  bool GravaNoContador(int32_t codigo) { return Gravar_Erro_Ficha(codigo, contadorLinhas_); }

  // What the handlers and record checks read during a run.
  ValidacaoFichaCadastral& Dono() { return *dono_; }
  const ValidacaoFichaCadastral& Dono() const { return *dono_; }
  EstadoSolicitacao& Estado() { return estado_; }
  const EstadoSolicitacao& Estado() const { return estado_; }
  // False when the caller is the web system ("TARNWEB"): the structure rules still apply but
  // no record's fields are checked.
  bool VerificaCampos() const { return verificaCampos_; }
  const std::string& Origem() const { return origem_; }
  double Hoje() const { return hoje_; }

 private:
  int16_t Le();
  void Progresso();
  void TomaLinha(const Linha& linha);
  // Calls a handler; a failure inside it marks the run as failed and refuses the record.
  bool Trata(Tratador tratador);
  // Stops the run with status 8, after writing the warning against the line counter.
  int16_t Para(int32_t codigo);
  int16_t Para();
  // Writes one warning line: code, keys, the record and its number.
  bool Escreve(int32_t codigo, double numero, std::string_view registro);

  ValidacaoFichaCadastral* dono_ = nullptr;

  // Files and arguments of the run.
  LeitorLinhas entrada_;
  ArquivoSaida advertencias_;
  std::string diretorio_;
  std::string origem_;
  bool verificaCampos_ = true;
  double hoje_ = 0;

  // What survives from one run to the next: the current line (empty for a new object), the
  // last TR 110 line read and the progress percentage.
  std::string linhaAtual_;
  // The current line is known to hold no "#": the frame or an earlier warning of it looked.
  bool semCerquilha_ = false;
  std::string linhaTR110_;
  double porcentagem_ = 0;

  // The warning line being built.
  LinhaAdvertencia linhaAdvertencia_;
  double contadorLinhas_ = 0;
  bool gravouAdvertencia_ = false;
  Falha falha_ = Falha::Nenhuma;
  // Some record of the open request was refused.
  bool solicitacaoRejeitada_ = false;

  EstadoSolicitacao estado_;
};

}  // namespace quorv::fichas

#endif  // QUORVVALIDA_SRC_FORMS_EXECUCAO_FICHAS_HPP_
