// The record handlers of the form run and the field checks they call. Each takes the record
// (the current 260-character line) and answers false when it recorded a warning or refused the
// record; warnings are numbered with the run's line counter.
#ifndef QUORVVALIDA_SRC_FORMS_VERIFICACOES_HPP_
#define QUORVVALIDA_SRC_FORMS_VERIFICACOES_HPP_

#include <cstdint>
#include <string_view>

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

}  // namespace quorv::fichas

#endif  // QUORVVALIDA_SRC_FORMS_VERIFICACOES_HPP_
