// The record handlers of the form run and the field checks they call. Each takes the record
// (the current 260-character line) and answers false when it recorded a warning or refused the
// record; warnings are numbered with the run's line counter.
#ifndef QUORVVALIDA_SRC_FORMS_VERIFICACOES_HPP_
#define QUORVVALIDA_SRC_FORMS_VERIFICACOES_HPP_

#include <cstdint>
#include <string_view>

#include "component/shared/texto.hpp"
#include "forms/colunas.hpp"
#include "forms/execucao_fichas.hpp"

namespace quorv::fichas {

// Records the warnings of one handler or check and remembers whether any was written.
class Ocorrencias {
 public:
  explicit Ocorrencias(ExecucaoFichas& execucao) : execucao_(execucao) {}
  // Records the code against the record's own line.
  void Falha(int32_t codigo) {
    execucao_.GravaNoContador(codigo);
    falhou_ = true;
  }
  // Records the code when the test failed.
  void Se(bool falhou, int32_t codigo) {
    if (falhou) Falha(codigo);
  }
  // True when nothing was recorded.
  bool Aceito() const { return !falhou_; }

 private:
  ExecucaoFichas& execucao_;
  bool falhou_ = false;
};

// Structure handlers, one per record type: the rules of the file and of its requests, then the
// record's field checks unless the caller is the web system.
bool TrataCabecalho(ExecucaoFichas& execucao, std::string_view registro);
bool TrataTR100(ExecucaoFichas& execucao, std::string_view registro);
bool TrataTR110(ExecucaoFichas& execucao, std::string_view registro);
bool TrataTR111(ExecucaoFichas& execucao, std::string_view registro);
bool TrataTR115(ExecucaoFichas& execucao, std::string_view registro);
bool TrataTR120(ExecucaoFichas& execucao, std::string_view registro);
bool TrataTR121(ExecucaoFichas& execucao, std::string_view registro);
bool TrataTR125(ExecucaoFichas& execucao, std::string_view registro);
bool TrataTR126(ExecucaoFichas& execucao, std::string_view registro);
bool TrataTR130(ExecucaoFichas& execucao, std::string_view registro);
bool TrataTR131(ExecucaoFichas& execucao, std::string_view registro);
bool TrataTR140(ExecucaoFichas& execucao, std::string_view registro);
bool TrataTR145(ExecucaoFichas& execucao, std::string_view registro);
bool TrataTR146(ExecucaoFichas& execucao, std::string_view registro);
bool TrataTR196(ExecucaoFichas& execucao, std::string_view registro);
bool TrataTR197(ExecucaoFichas& execucao, std::string_view registro);
bool TrataTR199(ExecucaoFichas& execucao, std::string_view registro);
bool TrataTrailer(ExecucaoFichas& execucao, std::string_view registro);

// Field checks.
bool VerificaCabecalho(ExecucaoFichas& execucao, std::string_view registro);
bool Valida_Campos_Nome_Pessoa(ExecucaoFichas& execucao, std::string_view registro);
bool Valida_Campos_Categoria(ExecucaoFichas& execucao, std::string_view registro);
bool Valida_Campos_CNAE(ExecucaoFichas& execucao, std::string_view registro);
bool Valida_Campos_Imovel(ExecucaoFichas& execucao, std::string_view registro);

// Field tests that several records share.

// The request number of a record must read as the number of the request's opening (leading
// numbers compared): warning 12.
void VerificaNumeroSolicitacao(Ocorrencias& ocorrencias, const ExecucaoFichas& execucao,
                               std::string_view registro);

// Where a record keeps its entry and exit dates, and how its exit date is judged.
struct RegraDatas {
  texto::Coluna entrada;
  texto::Coluna saida;
  // Whether the exit date may not be later than today.
  bool saidaAteHoje;
};

// The date rules of the three records that carry an entry and an exit date, side by side.
// - Category and economic activity: the exit date may not be later than today.
// - Property: an establishment may have fixed the day it leaves a property, so the property's
//   exit date is not compared with today.
// - The dates are the category's last group, so a failed (or zero) exit date ends the category's
//   check; the activity goes on to its billing order and the property to its owners.
inline constexpr RegraDatas kDatasCategoria{colunas::tr111::kEntrada, colunas::tr111::kSaida, true};
inline constexpr RegraDatas kDatasCNAE{colunas::tr115::kEntrada, colunas::tr115::kSaida, true};
inline constexpr RegraDatas kDatasImovel{colunas::tr140::kEntrada, colunas::tr140::kSaida, false};

// The entry date group (warning 90 once, at its first failure) and then the exit date group
// (warning 91 once, at its first failure; an exit date of zeros means the record has not ended
// and ends the group without a warning).
void VerificaDatas(Ocorrencias& ocorrencias, ExecucaoFichas& execucao, std::string_view registro,
                   const RegraDatas& regra);

}  // namespace quorv::fichas

#endif  // QUORVVALIDA_SRC_FORMS_VERIFICACOES_HPP_
