// The structure state of a registration-form run: which records the file and the open request
// have shown so far, the counts the closing checks compare with the declared quantities, and
// the values that later records of the request are compared with.
#ifndef QUORVVALIDA_SRC_FORMS_ESTADO_SOLICITACAO_HPP_
#define QUORVVALIDA_SRC_FORMS_ESTADO_SOLICITACAO_HPP_

#include <cstdint>
#include <string>

namespace quorv::fichas {

// Records counted per type, in a request or in the whole file.
struct Contagem {
  int32_t tr110 = 0;
  int32_t tr111 = 0;
  int32_t tr115 = 0;
  int32_t tr120 = 0;
  int32_t tr125 = 0;
  int32_t tr130 = 0;
  int32_t tr140 = 0;
  int32_t tr145 = 0;
  int32_t tr196 = 0;
  int32_t tr197 = 0;
};

// Current ("vigente") records of the establishment: categories, activities, persons and
// properties that have not ended.
struct Vigentes {
  int32_t tr111 = 0;
  int32_t tr115 = 0;
  int32_t tr120 = 0;
  int32_t tr125 = 0;
  int32_t tr130 = 0;
  int32_t tr140 = 0;
  int32_t tr145 = 0;
};

// What the establishment record (TR 110) declares about its request.
struct DeclaradoTR110 {
  int32_t propriedades = 0;
  int32_t participantes = 0;
  int32_t titulares = 0;
  int32_t area = 0;
};

// The identification of the last person record stored, which its name record must repeat.
struct Pessoa {
  int32_t codigoEstadual = 0;
  std::string tipo;
  double cpf = 0;
  double cnpj = 0;
};

struct EstadoSolicitacao {
  // The eighteen structure flags.
  bool headerVisto = false;
  bool solicitacaoAberta = false;
  bool tr110Presente = false;
  bool tr111Presente = false;
  bool tr115Presente = false;
  bool tr120Presente = false;
  bool tr121DoTR120 = false;
  bool tr125Presente = false;
  bool tr126DoTR125 = false;
  bool tr130Presente = false;
  bool tr131DoTR130 = false;
  bool tr140Presente = false;
  bool tr145DoTR140 = false;
  bool tr146DoTR145 = false;
  bool tr196Presente = false;
  bool tr197Presente = false;
  bool solicitacaoEncerrada = false;
  bool trailerVisto = false;

  // Counted in the open request (from its TR 100) and in the whole file.
  Contagem porSolicitacao;
  Contagem porArquivo;
  // Current records of the request's establishment (from its TR 100 or TR 110).
  Vigentes vigentes;
  // A current holder (TR 120) is a natural person ("F").
  bool titularPessoaFisica = false;

  // Taken from the request's TR 110.
  DeclaradoTR110 declarado;
  bool estabelecimentoAtivo = false;
  // The areas of the request's properties, and the parts of them in use.
  double somaAreas = 0;
  double somaAreasUtilizadas = 0;

  Pessoa pessoa;

  // What a request opening clears (the header clears the same): every flag after "request
  // open" except the TR 126 and TR 131 child flags, which keep the previous request's values.
  // The uneven clearing is deliberate.
  void LimpaAoAbrir() {
    tr110Presente = tr111Presente = tr115Presente = false;
    tr120Presente = tr121DoTR120 = tr125Presente = tr130Presente = false;
    tr140Presente = tr145DoTR140 = tr146DoTR145 = false;
    tr196Presente = tr197Presente = false;
    solicitacaoEncerrada = trailerVisto = false;
  }

  // What an establishment record clears: the flags of its dependent records, TR 111 to TR 197.
  void LimpaDependentes() {
    tr111Presente = tr115Presente = false;
    tr120Presente = tr121DoTR120 = false;
    tr125Presente = tr126DoTR125 = false;
    tr130Presente = tr131DoTR130 = false;
    tr140Presente = tr145DoTR140 = tr146DoTR145 = false;
    tr196Presente = tr197Presente = false;
  }
};

}  // namespace quorv::fichas

#endif  // QUORVVALIDA_SRC_FORMS_ESTADO_SOLICITACAO_HPP_
