// The name record of a person (TR 121 for a holder, TR 126 for a participant, TR 131 for a legal
// representative): it repeats the identification of the person record stored last and adds the
// name. One check serves the three.
#include "component/shared/texto.hpp"
#include "forms/verificacoes.hpp"

namespace quorv::fichas {
namespace {

// True when the origin of the call, upper-cased, is the code given.
bool OrigemE(std::string_view origem, std::string_view codigo) {
  if (origem.size() != codigo.size()) return false;
  for (std::size_t i = 0; i < origem.size(); ++i) {
    char c = origem[i];
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    if (c != codigo[i]) return false;
  }
  return true;
}

}  // namespace

bool Valida_Campos_Nome_Pessoa(ExecucaoFichas& execucao, std::string_view registro) {
  using texto::Apara;
  using texto::Campo;
  using texto::ValorInicial;
  namespace pessoa = colunas::pessoa;
  const Pessoa& anterior = execucao.Estado().pessoa;
  Ocorrencias ocorrencias(execucao);
  VerificaNumeroSolicitacao(ocorrencias, execucao, registro);

  // The city hall's code of the person is known only in remittances and returns.
  if (OrigemE(execucao.Origem(), "REM") || OrigemE(execucao.Origem(), "RET")) {
    ocorrencias.Se(texto::InteiroOuMenosUm(Campo(registro, pessoa::kCodigoPrefeitura)) < 0, 94);
  }

  ocorrencias.Se(
      ValorInicial(Apara(Campo(registro, pessoa::kCodigoEstadual))) != anterior.codigoEstadual, 95);
  // The person type is compared as written: "f" is not "F".
  ocorrencias.Se(Apara(Campo(registro, pessoa::kTipoPessoa)) != anterior.tipo, 96);
  // CPF and CNPJ are compared as numbers, so leading zeros and blanks do not matter and a blank
  // matches a blank; their check digits were the person record's concern.
  ocorrencias.Se(ValorInicial(Apara(Campo(registro, pessoa::kCPF))) != anterior.cpf, 97);
  ocorrencias.Se(ValorInicial(Apara(Campo(registro, pessoa::kCNPJ))) != anterior.cnpj, 98);
  ocorrencias.Se(texto::EmBranco(Campo(registro, pessoa::kNome)), 108);
  return ocorrencias.Aceito();
}

}  // namespace quorv::fichas
