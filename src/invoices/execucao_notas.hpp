// The state of one producer-invoice run, owned by its Validacao object, and the run itself.
#ifndef QUORVVALIDA_SRC_INVOICES_EXECUCAO_NOTAS_HPP_
#define QUORVVALIDA_SRC_INVOICES_EXECUCAO_NOTAS_HPP_

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "component/files/arquivo_saida.hpp"
#include "component/files/leitor_linhas.hpp"
#include "component/files/linha_advertencia.hpp"
#include "component/shared/inscricao.hpp"
#include "component/shared/texto.hpp"
#include "quorvvalida/falha.hpp"
#include "quorvvalida/relogio.hpp"

namespace quorv::notas {

// Width of every line of an invoice file.
inline constexpr std::size_t kLargura = 160;

// Record counts per type of detail record.
struct Contagem {
  double tr10 = 0;
  double tr15 = 0;
  double tr20 = 0;
  double tr25 = 0;
  double tr30 = 0;
  double tr35 = 0;
  double tr40 = 0;
};

// What the header tells the record checks.
struct DadosCabecalho {
  // Layout version, 1 or 2.
  int versao = 0;
  // The accepted header line.
  std::string linha;
  // Source type: 1 for a version-1 header, else the version-2 header's columns 58-59.
  double tipoFonte = 0;
  // Whether the issuer's municipality prefix is compared, and with what.
  bool verificaPrefixo = false;
  std::string prefixoEsperado;
  // The issuer number that a version-2 header of source type 6 demands of every note.
  std::optional<double> emitenteEsperado;
  // The numeric value of a version-2 header's source code (columns 11-24); a source of type 8
  // demands it of the issuer of every settlement document.
  std::optional<double> codigoFonte;
};

// The values a group's TR 10 records leave for later records of the same group. Everything is
// reset when a TR 01 opens the next group.
struct EstadoGrupo {
  // The previous note's issuer, counterpart, country, UF and operation code, as written (10, 14,
  // 3, 2 and 4 characters); a field that a note fails early leaves the one before. Blank until a
  // note of the group sets them.
  texto::TextoFixo<10> emitenteAnterior;
  texto::TextoFixo<14> destinatarioAnterior;
  texto::TextoFixo<3> paisAnterior;
  texto::TextoFixo<2> ufAnterior;
  texto::TextoFixo<4> operacaoAnterior;
  // Set when a note's counterpart, country, UF or operation differs from the previous note's.
  bool grupoDiverge = false;
  // The latest and earliest valid issue dates of the group's notes (day serials).
  double maiorEmissao = 0;
  double menorEmissao = 0;
  // Goods totals of the group's notes and of its settlement documents.
  double totalMercadorias = 0;
  double totalMercadoriasTR20 = 0;
  // Situation and movement type of the last note, as written.
  texto::TextoFixo<1> ultimaSituacao;
  texto::TextoFixo<1> ultimoMovimento;
  // "E" when the last valid operation code is below 5000, "S" when it is 5000 or above or 0;
  // blank until a note sets it.
  texto::TextoFixo<1> sentidoOperacao;
  // The income flag of the last note whose flag passed its checks.
  texto::TextoFixo<1> ultimoRendimento;
};

// Arguments of a run as Valida_Dados receives them (UTF-8 texts).
struct ArgumentosNotas {
  std::string arquivo;
  std::string diretorio;
  double chaveRemessa = 0;
  double chaveProcessamento = 0;
  std::string origem;
  std::string nomeServidor;
  std::string separador;
};

class ExecucaoNotas {
 public:
  // Runs one file and returns the status; numeroRemessa is set when the header is accepted.
  int16_t Executa(const ArgumentosNotas& argumentos, std::string& numeroRemessa,
                  const std::function<void(double&)>& progresso, const Relogio& relogio);

  // Why the last run could not start or could not finish its output; Nenhuma before any run.
  Falha UltimaFalha() const { return falha_; }
  // Tells a failure that the run itself could not see (one that escaped it).
  void DefineFalha(Falha falha) { falha_ = falha; }

  // Writes a warning for the current line: numbered from its columns 1-8 when linha is 0.
  bool Grava(int32_t codigo, double linha = 0);
  // Writes a warning numbered with the line counter (the frame's warnings).
  bool GravaNoContador(int32_t codigo) { return Grava(codigo, contadorLinhas_); }

  // The current line (160 characters) and the run's values the record checks read.
  std::string_view LinhaAtual() const { return linhaAtual_; }
  const DadosCabecalho& Cabecalho() const { return cabecalho_; }
  const Contagem& ContagemArquivo() const { return porArquivo_; }
  const Contagem& ContagemGrupo() const { return porGrupo_; }
  EstadoGrupo& Grupo() { return grupo_; }
  bool BlocoTR10TemItens() const { return tr15Visto_; }
  bool BlocoTR20TemItens() const { return tr25Visto_; }
  bool BlocoTR30TemItens() const { return tr35Visto_; }
  double Hoje() const { return hoje_; }
  // True when the state-registration checker of the run accepts the number for the UF.
  bool InscricaoValida(std::string_view inscricao, std::string_view uf) const {
    return inscricao::Valida(verificador_.get(), inscricao, uf);
  }

 private:
  void Inicializa();
  void ReiniciaGrupo();
  int16_t Le(std::string& numeroRemessa, const std::function<void(double&)>& progresso);
  int16_t VerificaPrimeiraLinha(const Linha& linha, std::string& numeroRemessa);
  void Despacha(int tipo);
  void DespachaTR01();
  void DespachaTR98();
  bool DespachaTR99();
  void Progresso(const std::function<void(double&)>& progresso);
  void TomaLinha(const Linha& linha);
  void Finaliza();
  int16_t Para(int32_t codigo, double linha);
  bool VerificaContextoGrupo();
  bool FechaBlocosPendentes();
  // A failed check or structure rule makes the run's status 1.
  void MarcaErro() { resultado_ = 1; }
  // Records a structure warning at the line when the rule fails.
  void Regra(bool falha, int32_t codigo) {
    if (falha) {
      Grava(codigo);
      MarcaErro();
    }
  }
  void Contexto() {
    if (!VerificaContextoGrupo()) MarcaErro();
  }
  void FechaBlocos() {
    if (!FechaBlocosPendentes()) MarcaErro();
  }

  // Files and arguments of the run.
  LeitorLinhas entrada_;
  ArquivoSaida advertencias_;
  std::string caminhoAdvertencias_;
  // The run only counts the records of the groups (origin "A0").
  bool soConta_ = false;
  std::string nomeServidor_;
  double hoje_ = 0;
  // The state-registration checker in force when the run started.
  std::shared_ptr<const inscricao::Verificador> verificador_;

  // The line being examined and the warning line being built.
  std::string linhaAtual_ = std::string(kLargura, ' ');
  // The current line is known to hold no "#": the frame or an earlier warning of it looked.
  bool semCerquilha_ = false;
  LinhaAdvertencia linhaAdvertencia_;
  double contadorLinhas_ = 0;
  // The file's lines as the progress event counts them, its step, and the next position at which
  // the event comes.
  double linhasDoArquivo_ = 0;
  std::uint64_t passoProgresso_ = 0;
  std::uint64_t proximoMultiplo_ = 0;
  int16_t resultado_ = 0;
  bool gravouAdvertencia_ = false;
  Falha falha_ = Falha::Nenhuma;

  // Structure of the file.
  DadosCabecalho cabecalho_;
  bool headerVisto_ = false;
  bool trailerVisto_ = false;
  bool grupoAberto_ = false;
  bool grupoFechado_ = false;
  bool blocoTR10Aberto_ = false;
  bool blocoTR20Aberto_ = false;
  bool blocoTR30Aberto_ = false;
  bool tr15Visto_ = false;
  bool tr25Visto_ = false;
  bool tr35Visto_ = false;

  // Counters and the open group. The group's notes themselves are not kept: they would only
  // serve a listing of the codes that checks leave on each note, and no check leaves one.
  Contagem porArquivo_;
  Contagem porGrupo_;
  EstadoGrupo grupo_;
};

}  // namespace quorv::notas

#endif  // QUORVVALIDA_SRC_INVOICES_EXECUCAO_NOTAS_HPP_
