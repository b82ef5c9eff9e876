// Opening (TR 01) and closing (TR 98) of a group of records.
#include "component/shared/texto.hpp"
#include "invoices/verificacoes.hpp"

namespace quorv::notas {
namespace {

using texto::Campo;
using texto::Coluna;

// The declared counts of TR 10, 15, 20, 25, 30 and 35 in the group and their warning codes.
struct Quantidade {
  Coluna coluna;
  int32_t codigo;
  double Contagem::*lidos;
};
constexpr Quantidade kQuantidades[] = {
    {{11, 6}, 160, &Contagem::tr10}, {{17, 6}, 161, &Contagem::tr15},
    {{23, 6}, 162, &Contagem::tr20}, {{29, 6}, 163, &Contagem::tr25},
    {{35, 6}, 164, &Contagem::tr30}, {{41, 6}, 165, &Contagem::tr35}};

}  // namespace

bool VerificaTR01(ExecucaoNotas& execucao, std::string_view registro) {
  // The opening record only opens the group: it has no field to check.
  static_cast<void>(execucao);
  static_cast<void>(registro);
  return true;
}

bool VerificaTR98(ExecucaoNotas& execucao, std::string_view registro) {
  Ocorrencias ocorrencias(execucao);
  const Contagem& lidos = execucao.ContagemGrupo();
  for (const Quantidade& quantidade : kQuantidades) {
    const std::string_view campo = Campo(registro, quantidade.coluna);
    const auto declarado = texto::Numero(campo);
    // A group holds at least one note, so its TR 10 count must be above zero.
    const double minimo = quantidade.codigo == 160 ? 1 : 0;
    if (texto::EmBranco(campo) || texto::Apara(campo).size() != 6 || !declarado ||
        *declarado < minimo || *declarado != lidos.*quantidade.lidos) {
      ocorrencias.Falha(quantidade.codigo);
    }
  }
  // The income tests of the closing are not published, so the closing raises no 140.
  return ocorrencias.Aceito();
}

}  // namespace quorv::notas
