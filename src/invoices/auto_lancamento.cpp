// The tax assessment notice (TR 40) issued against a taxpayer within a group. Each field that
// fails records its warning and the next field is checked all the same.
#include "component/shared/datas.hpp"
#include "component/shared/texto.hpp"
#include "invoices/campos_notas.hpp"
#include "invoices/verificacoes.hpp"

namespace quorv::notas {
namespace {

using texto::Coluna;
using texto::EmBranco;

constexpr Coluna kNumero{11, 10};
constexpr Coluna kLavratura{21, 8};
constexpr Coluna kCiente{29, 8};
constexpr Coluna kInscricao{37, 10};
constexpr Coluna kCPF{47, 11};
constexpr Coluna kCNPJ{58, 14};
constexpr Coluna kNome{72, 46};
constexpr Coluna kValor{118, 13};

// The notice being checked, with what its checks share.
struct Lancamento {
  ExecucaoNotas& execucao;
  Ocorrencias& ocorrencias;
  std::string_view registro;

  std::string_view Campo(Coluna coluna) const { return texto::Campo(registro, coluna); }
  void Falha(int32_t codigo) const { ocorrencias.Falha(codigo); }
};

// The age test of the notice's dates: earlier than 2000-01-01 and at the same time later than
// today. The two conditions are joined on purpose, as they always have been, so no date fails it.
bool ForaDoPeriodo(const Lancamento& lancamento, double data) {
  return data < Data(2000, 1, 1) && data > lancamento.execucao.Hoje();
}

void VerificaNumero(const Lancamento& lancamento) {
  const auto numero = texto::Numero(lancamento.Campo(kNumero));
  if (!numero || *numero <= 0) lancamento.Falha(183);
}

void VerificaLavratura(const Lancamento& lancamento) {
  const std::string_view lavratura = lancamento.Campo(kLavratura);
  // A notice not yet drawn up has a blank date or zeros.
  const auto valor = texto::Numero(lavratura);
  if (EmBranco(lavratura) || (valor && *valor == 0)) return;
  const auto data = datas::DataDaMascara(lavratura);
  if (!data || ForaDoPeriodo(lancamento, *data)) {
    lancamento.Falha(184);
    return;
  }
  // A notice is not drawn up before the group's earliest note.
  if (*data < lancamento.execucao.Grupo().menorEmissao) lancamento.Falha(184);
}

void VerificaCiente(const Lancamento& lancamento) {
  const std::string_view ciente = lancamento.Campo(kCiente);
  const auto data = datas::DataDaMascara(ciente);
  if (!data || ForaDoPeriodo(lancamento, *data)) {
    lancamento.Falha(185);
    return;
  }
  // The taxpayer acknowledges a notice no earlier than it was drawn up.
  const auto lavratura = datas::DataDaMascara(lancamento.Campo(kLavratura));
  if (lavratura && *lavratura > *data) lancamento.Falha(185);
}

void VerificaIdentificacao(const Lancamento& lancamento) {
  if (EmBranco(lancamento.Campo(kInscricao)) && EmBranco(lancamento.Campo(kCNPJ)) &&
      EmBranco(lancamento.Campo(kCPF))) {
    lancamento.Falha(191);
  }
}

// Checked whatever the fields before found, so a blank registration is also told 186.
void VerificaInscricao(const Lancamento& lancamento) {
  if (!lancamento.execucao.InscricaoValida(lancamento.Campo(kInscricao), kUFLocal))
    lancamento.Falha(186);
}

void VerificaCPF(const Lancamento& lancamento) {
  if (!DocumentoAceito(lancamento.Campo(kCPF), Contribuinte::kCpf)) lancamento.Falha(187);
}

void VerificaCNPJ(const Lancamento& lancamento) {
  if (!DocumentoAceito(lancamento.Campo(kCNPJ), Contribuinte::kCnpj)) lancamento.Falha(188);
}

void VerificaNome(const Lancamento& lancamento) {
  if (EmBranco(lancamento.Campo(kNome))) lancamento.Falha(189);
}

void VerificaValor(const Lancamento& lancamento) {
  const auto valor = texto::Numero(lancamento.Campo(kValor));
  if (!valor || *valor <= 0) lancamento.Falha(190);
}

}  // namespace

bool VerificaTR40(ExecucaoNotas& execucao, std::string_view registro) {
  Ocorrencias ocorrencias(execucao);
  const Lancamento lancamento{execucao, ocorrencias, registro};
  VerificaNumero(lancamento);
  VerificaLavratura(lancamento);
  VerificaCiente(lancamento);
  VerificaIdentificacao(lancamento);
  VerificaInscricao(lancamento);
  VerificaCPF(lancamento);
  VerificaCNPJ(lancamento);
  VerificaNome(lancamento);
  VerificaValor(lancamento);
  return ocorrencias.Aceito();
}

}  // namespace quorv::notas
