// The columns of the registration-form records that the run, the request's structure rules and
// the field checks read. Only the fields this validator reads are here; the rest of each layout
// is not examined.
#ifndef QUORVVALIDA_SRC_FORMS_COLUNAS_HPP_
#define QUORVVALIDA_SRC_FORMS_COLUNAS_HPP_

#include "component/shared/texto.hpp"

namespace quorv::fichas::colunas {

using texto::Coluna;

// Every line: its sequence number and record type.
inline constexpr Coluna kSequencia{1, 8};
inline constexpr Coluna kTipoRegistro{9, 3};

// Every request record repeats the request number after the record type.
inline constexpr Coluna kNumeroSolicitacao{12, 10};

// File header (TR 1).
namespace cabecalho {
inline constexpr Coluna kMunicipio{33, 3};
inline constexpr Coluna kNomeMunicipio{36, 25};
inline constexpr Coluna kNumeroRemessa{61, 6};
inline constexpr Coluna kDataCriacao{67, 8};
}  // namespace cabecalho

// Request opening (TR 100).
namespace tr100 {
inline constexpr Coluna kTipoSolicitacao{22, 1};
}  // namespace tr100

// Establishment (TR 110).
namespace tr110 {
inline constexpr Coluna kInicioAtividade{42, 8};
inline constexpr Coluna kFimAtividade{50, 8};
inline constexpr Coluna kArea{136, 7};
inline constexpr Coluna kQuantidadePropriedades{143, 2};
inline constexpr Coluna kQuantidadeParticipantes{145, 2};
inline constexpr Coluna kQuantidadeTitulares{147, 2};
}  // namespace tr110

// Category (TR 111).
namespace tr111 {
inline constexpr Coluna kCategoria{22, 2};
inline constexpr Coluna kEntrada{24, 8};
inline constexpr Coluna kSaida{32, 8};
}  // namespace tr111

// Economic activity (TR 115).
namespace tr115 {
inline constexpr Coluna kCNAE{22, 7};
inline constexpr Coluna kEntrada{29, 8};
inline constexpr Coluna kSaida{37, 8};
inline constexpr Coluna kOrdemFaturamento{45, 1};
}  // namespace tr115

// Persons (TR 120 holder, TR 125 participant, TR 130 legal representative, TR 145 owner) and
// their name records (TR 121, TR 126, TR 131), which repeat the person's identification.
namespace pessoa {
inline constexpr Coluna kCodigoPrefeitura{22, 8};
inline constexpr Coluna kCodigoEstadual{30, 8};
inline constexpr Coluna kTipoPessoa{38, 1};
inline constexpr Coluna kCPF{39, 11};
inline constexpr Coluna kCNPJ{50, 14};
inline constexpr Coluna kNome{64, 46};
// End of the person's link with the establishment (TR 120, TR 125 and TR 130).
inline constexpr Coluna kFimVinculo{227, 8};
}  // namespace pessoa

// Property (TR 140).
namespace tr140 {
inline constexpr Coluna kMunicipio{22, 3};
inline constexpr Coluna kZona{25, 1};
inline constexpr Coluna kMatricula{26, 8};
inline constexpr Coluna kArea{34, 7};
inline constexpr Coluna kQuantidadeProprietarios{41, 2};
inline constexpr Coluna kAreaUtilizada{43, 7};
inline constexpr Coluna kEntrada{50, 8};
inline constexpr Coluna kSaida{58, 8};
}  // namespace tr140

}  // namespace quorv::fichas::colunas

#endif  // QUORVVALIDA_SRC_FORMS_COLUNAS_HPP_
