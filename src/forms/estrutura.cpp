// The structure rules of a form file and of its requests: a header first, requests opened by
// TR 100 and closed by TR 199 with one establishment (TR 110) each, child records only after
// their parent, one name record per person, and a trailer last. Each handler applies its rules
// and then, unless the caller is the web system, the field checks of its record.
//
// The field layouts of TR 100, 110, 120, 125, 130, 145, 146, 196, 197 and 199 and of the
// trailer are not published, so those records have no field checks; neither have the closing
// counts that depend on lists of request types that are not published either.
#include <cmath>

#include "component/shared/cp1252.hpp"
#include "component/shared/texto.hpp"
#include "forms/colunas.hpp"
#include "forms/verificacoes.hpp"
#include "quorvvalida/validacao_ficha_cadastral.hpp"

namespace quorv::fichas {
namespace {

using texto::Campo;
namespace pessoa = colunas::pessoa;

// A warning code outside the catalogue: a person record before the establishment has always
// been reported with it, and its text therefore reads back empty.
constexpr int32_t kTR120SemTR110 = 999;

// Runs the record's field checks, unless the caller is the web system.
bool Campos(ExecucaoFichas& execucao, Tratador verifica, std::string_view registro) {
  return !execucao.VerificaCampos() || verifica(execucao, registro);
}

// Refuses the record with the warning.
bool Recusa(ExecucaoFichas& execucao, int32_t codigo) {
  execucao.GravaNoContador(codigo);
  return false;
}

// Made first by the handlers of TR 110 to TR 199: all four tests, each with its warning. A
// record after a request's closing and before the next opening thus gets 10 and 11.
bool VerificacaoComum(ExecucaoFichas& execucao) {
  const EstadoSolicitacao& estado = execucao.Estado();
  Ocorrencias ocorrencias(execucao);
  ocorrencias.Se(!estado.headerVisto, 4);
  ocorrencias.Se(!estado.solicitacaoAberta, 10);
  ocorrencias.Se(estado.solicitacaoEncerrada, 11);
  ocorrencias.Se(estado.trailerVisto, 9);
  return ocorrencias.Aceito();
}

// A record is current while its end date is empty: blank or zeros.
bool Vigente(std::string_view dataFim) {
  return texto::ValorInicial(dataFim) == 0;
}

// Stores the identification of a person record, which its name record must repeat.
void GuardaPessoa(EstadoSolicitacao& estado, std::string_view registro) {
  Pessoa& guardada = estado.pessoa;
  // Halves to even, as the conversion of a number to a whole one does.
  guardada.codigoEstadual = static_cast<int32_t>(
      std::nearbyint(texto::ValorInicial(texto::Apara(Campo(registro, pessoa::kCodigoEstadual)))));
  guardada.tipo.assign(texto::Apara(Campo(registro, pessoa::kTipoPessoa)));
  guardada.cpf = texto::ValorInicial(texto::Apara(Campo(registro, pessoa::kCPF)));
  guardada.cnpj = texto::ValorInicial(texto::Apara(Campo(registro, pessoa::kCNPJ)));
}

// The single child record (TR 121, 126, 131, 146) of the preceding parent record.
bool Filho(ExecucaoFichas& execucao, bool pai, bool& filho, int32_t semPai, int32_t maisDeUm) {
  if (!VerificacaoComum(execucao)) return false;
  if (!pai) return Recusa(execucao, semPai);
  if (filho) return Recusa(execucao, maisDeUm);
  filho = true;
  return true;
}

}  // namespace

bool TrataCabecalho(ExecucaoFichas& execucao, std::string_view registro) {
  EstadoSolicitacao& estado = execucao.Estado();
  // The run hands over a header only on the file's first line, where neither of these can hold;
  // they are the header's rules all the same.
  if (estado.headerVisto) return Recusa(execucao, 6);
  if (estado.trailerVisto) return Recusa(execucao, 9);
  estado.headerVisto = true;
  estado.solicitacaoAberta = false;
  estado.LimpaAoAbrir();
  return Campos(execucao, VerificaCabecalho, registro);
}

bool TrataTR100(ExecucaoFichas& execucao, std::string_view registro) {
  EstadoSolicitacao& estado = execucao.Estado();
  ValidacaoFichaCadastral& dono = execucao.Dono();
  // The request's counts and values start again at every opening, a refused one included.
  estado.porSolicitacao = Contagem{};
  estado.vigentes = Vigentes{};
  estado.declarado = DeclaradoTR110{};
  estado.somaAreas = 0;
  estado.somaAreasUtilizadas = 0;
  estado.titularPessoaFisica = false;
  dono.iOrdem_Faturamento = 1;
  dono.sTipo_Solicitacao = cp1252::ParaUtf8(Campo(registro, colunas::tr100::kTipoSolicitacao));
  dono.sNro_Solicitacao = cp1252::ParaUtf8(Campo(registro, colunas::kNumeroSolicitacao));

  if (!estado.headerVisto) return Recusa(execucao, 4);
  if (estado.solicitacaoAberta) return Recusa(execucao, 13);
  if (estado.trailerVisto) return Recusa(execucao, 9);
  estado.solicitacaoAberta = true;
  estado.LimpaAoAbrir();
  return true;
}

bool TrataTR110(ExecucaoFichas& execucao, std::string_view registro) {
  EstadoSolicitacao& estado = execucao.Estado();
  ValidacaoFichaCadastral& dono = execucao.Dono();
  // What the establishment declares is taken before its rules, for the request's closing.
  estado.declarado.propriedades =
      texto::InteiroOuMenosUm(Campo(registro, colunas::tr110::kQuantidadePropriedades));
  estado.declarado.participantes =
      texto::InteiroOuMenosUm(Campo(registro, colunas::tr110::kQuantidadeParticipantes));
  estado.declarado.titulares =
      texto::InteiroOuMenosUm(Campo(registro, colunas::tr110::kQuantidadeTitulares));
  estado.declarado.area = texto::InteiroOuMenosUm(Campo(registro, colunas::tr110::kArea));
  dono.Dt_Inicio_Atividade = cp1252::ParaUtf8(Campo(registro, colunas::tr110::kInicioAtividade));
  dono.Dt_Fim_Atividade = cp1252::ParaUtf8(Campo(registro, colunas::tr110::kFimAtividade));
  dono.iOrdem_Faturamento = 1;
  estado.somaAreas = 0;
  estado.somaAreasUtilizadas = 0;
  estado.vigentes = Vigentes{};

  if (!VerificacaoComum(execucao)) return false;
  // A second establishment still clears the flags of the records that follow it.
  estado.tr110Presente = true;
  estado.LimpaDependentes();
  if (estado.porSolicitacao.tr110 > 0) return Recusa(execucao, 14);
  estado.porSolicitacao.tr110 += 1;
  estado.porArquivo.tr110 += 1;
  estado.estabelecimentoAtivo = Vigente(Campo(registro, colunas::tr110::kFimAtividade));
  return true;
}

bool TrataTR111(ExecucaoFichas& execucao, std::string_view registro) {
  EstadoSolicitacao& estado = execucao.Estado();
  if (!VerificacaoComum(execucao)) return false;
  estado.tr111Presente = true;
  if (estado.porSolicitacao.tr110 == 0) return Recusa(execucao, 15);
  estado.porSolicitacao.tr111 += 1;
  estado.porArquivo.tr111 += 1;
  if (Vigente(Campo(registro, colunas::tr111::kSaida))) estado.vigentes.tr111 += 1;
  return Campos(execucao, Valida_Campos_Categoria, registro);
}

bool TrataTR115(ExecucaoFichas& execucao, std::string_view registro) {
  EstadoSolicitacao& estado = execucao.Estado();
  if (!VerificacaoComum(execucao)) return false;
  estado.tr115Presente = true;
  if (estado.porSolicitacao.tr110 == 0) return Recusa(execucao, 16);
  estado.porSolicitacao.tr115 += 1;
  estado.porArquivo.tr115 += 1;
  if (Vigente(Campo(registro, colunas::tr115::kSaida))) estado.vigentes.tr115 += 1;
  return Campos(execucao, Valida_Campos_CNAE, registro);
}

bool TrataTR120(ExecucaoFichas& execucao, std::string_view registro) {
  EstadoSolicitacao& estado = execucao.Estado();
  if (!VerificacaoComum(execucao)) return false;
  estado.tr120Presente = true;
  if (estado.porSolicitacao.tr110 == 0) return Recusa(execucao, kTR120SemTR110);
  // A holder whose predecessor lacked its name record is told so and still taken, unlike a
  // participant or a legal representative: the warning does not refuse the holder itself, and
  // the request is rejected only when its closing finds the last holder without its name.
  if (estado.porSolicitacao.tr120 > 0 && !estado.tr121DoTR120) execucao.GravaNoContador(18);
  estado.tr121DoTR120 = false;
  estado.porSolicitacao.tr120 += 1;
  estado.porArquivo.tr120 += 1;
  if (Vigente(Campo(registro, pessoa::kFimVinculo))) {
    estado.vigentes.tr120 += 1;
    if (texto::IgualSemCaixa(Campo(registro, pessoa::kTipoPessoa), "F")) {
      estado.titularPessoaFisica = true;
    }
  }
  GuardaPessoa(estado, registro);
  // The holder's own field layout is not published: it has no field check to answer.
  return true;
}

bool TrataTR121(ExecucaoFichas& execucao, std::string_view registro) {
  EstadoSolicitacao& estado = execucao.Estado();
  return Filho(execucao, estado.tr120Presente, estado.tr121DoTR120, 19, 20) &&
         Campos(execucao, Valida_Campos_Nome_Pessoa, registro);
}

bool TrataTR125(ExecucaoFichas& execucao, std::string_view registro) {
  EstadoSolicitacao& estado = execucao.Estado();
  if (!VerificacaoComum(execucao)) return false;
  if (estado.porSolicitacao.tr110 == 0) return Recusa(execucao, 21);
  // A participant whose predecessor lacked its name record is refused and not counted.
  if (estado.porSolicitacao.tr125 > 0 && !estado.tr126DoTR125) return Recusa(execucao, 22);
  estado.porSolicitacao.tr125 += 1;
  estado.porArquivo.tr125 += 1;
  estado.tr125Presente = true;
  estado.tr126DoTR125 = false;
  if (Vigente(Campo(registro, pessoa::kFimVinculo))) estado.vigentes.tr125 += 1;
  GuardaPessoa(estado, registro);
  return true;
}

bool TrataTR126(ExecucaoFichas& execucao, std::string_view registro) {
  EstadoSolicitacao& estado = execucao.Estado();
  return Filho(execucao, estado.tr125Presente, estado.tr126DoTR125, 23, 24) &&
         Campos(execucao, Valida_Campos_Nome_Pessoa, registro);
}

bool TrataTR130(ExecucaoFichas& execucao, std::string_view registro) {
  EstadoSolicitacao& estado = execucao.Estado();
  if (!VerificacaoComum(execucao)) return false;
  if (estado.porSolicitacao.tr110 == 0) return Recusa(execucao, 25);
  // A legal representative whose predecessor lacked its name record is refused and not counted.
  if (estado.porSolicitacao.tr130 > 0 && !estado.tr131DoTR130) return Recusa(execucao, 26);
  estado.porSolicitacao.tr130 += 1;
  estado.porArquivo.tr130 += 1;
  estado.tr130Presente = true;
  estado.tr131DoTR130 = false;
  if (Vigente(Campo(registro, pessoa::kFimVinculo))) estado.vigentes.tr130 += 1;
  GuardaPessoa(estado, registro);
  return true;
}

bool TrataTR131(ExecucaoFichas& execucao, std::string_view registro) {
  EstadoSolicitacao& estado = execucao.Estado();
  return Filho(execucao, estado.tr130Presente, estado.tr131DoTR130, 27, 28) &&
         Campos(execucao, Valida_Campos_Nome_Pessoa, registro);
}

bool TrataTR140(ExecucaoFichas& execucao, std::string_view registro) {
  EstadoSolicitacao& estado = execucao.Estado();
  if (!VerificacaoComum(execucao)) return false;
  estado.tr140Presente = true;
  estado.tr145DoTR140 = false;
  if (estado.porSolicitacao.tr110 == 0) return Recusa(execucao, 29);
  estado.porSolicitacao.tr140 += 1;
  estado.porArquivo.tr140 += 1;
  if (Vigente(Campo(registro, colunas::tr140::kSaida))) estado.vigentes.tr140 += 1;
  // A blank or unreadable area adds nothing to the sums; the property's own check reports it.
  estado.somaAreas += texto::ValorInicial(Campo(registro, colunas::tr140::kArea));
  estado.somaAreasUtilizadas +=
      texto::ValorInicial(Campo(registro, colunas::tr140::kAreaUtilizada));
  return Campos(execucao, Valida_Campos_Imovel, registro);
}

bool TrataTR145(ExecucaoFichas& execucao, std::string_view registro) {
  EstadoSolicitacao& estado = execucao.Estado();
  if (!VerificacaoComum(execucao)) return false;
  estado.tr145DoTR140 = true;
  if (estado.porSolicitacao.tr110 == 0) return Recusa(execucao, 32);
  if (estado.porSolicitacao.tr140 == 0) return Recusa(execucao, 33);
  // An owner whose predecessor lacked its complement is told so and still taken, as a holder is.
  if (estado.porSolicitacao.tr145 > 0 && !estado.tr146DoTR145) execucao.GravaNoContador(34);
  estado.tr146DoTR145 = false;
  estado.porSolicitacao.tr145 += 1;
  estado.porArquivo.tr145 += 1;
  // The owner record's end-date columns are not published: every owner counts as current.
  estado.vigentes.tr145 += 1;
  GuardaPessoa(estado, registro);
  // The owner's own field layout is not published: it has no field check to answer.
  return true;
}

bool TrataTR146(ExecucaoFichas& execucao, std::string_view) {
  EstadoSolicitacao& estado = execucao.Estado();
  return Filho(execucao, estado.tr145DoTR140, estado.tr146DoTR145, 35, 36);
}

bool TrataTR196(ExecucaoFichas& execucao, std::string_view) {
  EstadoSolicitacao& estado = execucao.Estado();
  if (!VerificacaoComum(execucao)) return false;
  estado.tr196Presente = true;
  estado.porSolicitacao.tr196 += 1;
  estado.porArquivo.tr196 += 1;
  return true;
}

bool TrataTR197(ExecucaoFichas& execucao, std::string_view) {
  EstadoSolicitacao& estado = execucao.Estado();
  if (!VerificacaoComum(execucao)) return false;
  estado.tr197Presente = true;
  estado.porSolicitacao.tr197 += 1;
  estado.porArquivo.tr197 += 1;
  return true;
}

bool TrataTR199(ExecucaoFichas& execucao, std::string_view) {
  EstadoSolicitacao& estado = execucao.Estado();
  if (!VerificacaoComum(execucao)) return false;
  estado.solicitacaoAberta = false;
  estado.solicitacaoEncerrada = true;
  // The last person of each kind must have had its name record.
  Ocorrencias ocorrencias(execucao);
  ocorrencias.Se(estado.porSolicitacao.tr120 > 0 && !estado.tr121DoTR120, 18);
  ocorrencias.Se(estado.porSolicitacao.tr125 > 0 && !estado.tr126DoTR125, 22);
  ocorrencias.Se(estado.porSolicitacao.tr130 > 0 && !estado.tr131DoTR130, 26);
  return ocorrencias.Aceito();
}

bool TrataTrailer(ExecucaoFichas& execucao, std::string_view) {
  EstadoSolicitacao& estado = execucao.Estado();
  if (!estado.headerVisto) {
    execucao.GravaNoContador(4);
  } else if (estado.trailerVisto) {
    execucao.GravaNoContador(8);
  } else if (estado.solicitacaoAberta) {
    execucao.GravaNoContador(38);
  } else {
    estado.trailerVisto = true;
  }
  // The trailer refuses every file, whatever it found, so a run that reaches its trailer always
  // ends there with status 8. Deliberate: callers judge a run by its warnings file.
  return false;
}

}  // namespace quorv::fichas
