#include <iterator>

#include "forms/messages/catalogo_fichas.hpp"
#include "quorvvalida/cls_quorv_msg_fichas.hpp"

namespace quorv {
namespace fichas {
namespace {

// The catalogue, codes 1 to 129 in order. The texts are kept as the treasury's systems show
// them: "TRAILLER", "páis", "Inclusao/Alteracao" and the blank that ends code 92.
constexpr std::string_view kMensagens[] = {
    "Linha com tamanho incorreto",                                            // 1
    "Arquivo com formato inválido",                                           // 2
    "Número da linha incorreta",                                              // 3
    "Arquivo sem HEADER",                                                     // 4
    "TR inválido",                                                            // 5
    "Arquivo com mais de um HEADER",                                          // 6
    "Arquivo sem TRAILLER",                                                   // 7
    "Arquivo com mais de um TRAILLER",                                        // 8
    "Arquivos grudados",                                                      // 9
    "Solicitação não iniciada",                                               // 10
    "Solicitação já encerrada",                                               // 11
    "Número da solicitação inválida",                                         // 12
    "Solicitação já iniciada",                                                // 13
    "Mais de um TR110 na solicitação",                                        // 14
    "Solicitação sem TR110",                                                  // 15
    "TR115 sem TR110",                                                        // 16
    "TR120 sem TR110",                                                        // 17
    "Falta TR121 para TR120",                                                 // 18
    "TR121 sem TR120",                                                        // 19
    "Mais de um TR121 para TR120",                                            // 20
    "TR125 sem TR110",                                                        // 21
    "Falta TR126 para TR125",                                                 // 22
    "TR126 sem TR125",                                                        // 23
    "Mais de um TR126 para TR125",                                            // 24
    "TR130 sem TR110",                                                        // 25
    "Falta TR131 para TR130",                                                 // 26
    "TR131 sem TR130",                                                        // 27
    "Mais de um TR131 para TR130",                                            // 28
    "TR140 sem TR110",                                                        // 29
    "Falta Proprietário vigente para TR140",                                  // 30
    "Quantidade de Proprietários vigente diferente do apresentado no TR140",  // 31
    "TR145 sem TR110",                                                        // 32
    "TR145 sem TR140",                                                        // 33
    "Falta TR146 para TR145",                                                 // 34
    "TR146 sem TR145",                                                        // 35
    "Mais de um TR146 para TR145",                                            // 36
    "TR197 sem TR110",                                                        // 37
    "Falta TR199 - Solicitação em Aberto",                                    // 38
    "Solicitação sem estabelecimento",                                        // 39
    "Mais de um estabelecimento por solicitação",                             // 40
    "Estabelecimento sem categoria vigente",                                  // 41
    "Estabelecimento com mais de uma categoria vigente",                      // 42
    "Estabelecimento sem CNAE Fiscal vigente",                                // 43
    "Quantidade de CNAE Fiscal vigente maior que 3",                          // 44
    "Estabelecimento sem titular vigente",                                    // 45
    "Quantidade de titulares vigentes difere do informado no TR110",          // 46
    "Quantidade de participantes vigentes difere do informado no TR110",      // 47
    "Mais de 1 responsável legal vigente por estabelecimento",                // 48
    "Estabelecimento sem propriedade vigente",                                // 49
    "Quantidade de propriedades vigentes difere do informado no TR110",       // 50
    "Somatório das áreas utilizadas difere da área do estabelecimento",       // 51
    "Falta responsável legal pelo estabelecimento",                           // 52
    "Propriedade sem proprietários vigente",                                  // 53
    "Quantidade de proprietários vigentes difere do informado no TR140",      // 54
    "Campo deve ser igual a branco",                                          // 55
    "Código do município inválido",                                           // 56
    "Nome do município inválido",                                             // 57
    "Data da criação inválida",                                               // 58
    "Versão inválida",                                                        // 59
    "Indicador de teste inválido",                                            // 60
    "Indicador de sincronismo inválido",                                      // 61
    "Indicador de adesão inválido",                                           // 62
    "Autenticação inválida",                                                  // 63
    "Número da remessa inválida",                                             // 64
    "Tipo de solicitação inválido",                                           // 65
    "Indicador de alteração de estabelecimento/categoria inválido",           // 66
    "Indicador de alteração do CNAE Fiscal inválido",                         // 67
    "Indicador de alteração de titular inválido",                             // 68
    "Indicador de alteração de participante inválido",                        // 69
    "Indicador de alteração de propriedade/proprietário inválido",            // 70
    "Indicador de alteração de responsável legal inválido",                   // 71
    "Indicador de homologação inválido",                                      // 72
    "Inscrição Estadual do estabelecimento inválida",                         // 73
    "Número da Prefeitura inválido",                                          // 74
    "Data de Início de atividade inválida",                                   // 75
    "Data de Fim de atividade inválida",                                      // 76
    "Nome do estabelecimento inválido",                                       // 77
    "Código do Logradouro inválido",                                          // 78
    "Código do distrito inválido",                                            // 79
    "Número inválido",                                                        // 80
    "Complemento inválido",                                                   // 81
    "Código do motivo de baixa inválido",                                     // 82
    "Área inválida",                                                          // 83
    "Quantidade de propriedades inválida",                                    // 84
    "Quantidade de participantes inválida",                                   // 85
    "Quantidade de titulares inválida",                                       // 86
    "Inscrição Estadual do sucedido inválida",                                // 87
    "Inscrição Estadual do sucessor inválida",                                // 88
    "Código de categoria inválido",                                           // 89
    "Data de entrada inválida",                                               // 90
    "Data de saída inválida",                                                 // 91
    "Código do CNAE Fiscal inválido ",                                        // 92
    "Ordem de faturamento inválida",                                          // 93
    "Código de pessoa na prefeitura inválido",                                // 94
    "Código de pessoa do IBM inválido",                                       // 95
    "Código do tipo de pessoa inválido",                                      // 96
    "CPF inválido",                                                           // 97
    "CNPJ inválido",                                                          // 98
    "Tipo do Logradouro inválido",                                            // 99
    "Nome do Logradouro inválido",                                            // 100
    "Nome do distrito inválido",                                              // 101
    "UF do Logradouro inválida",                                              // 102
    "Código do páis inválido",                                                // 103
    "DDD inválido",                                                           // 104
    "Número do telefone inválido",                                            // 105
    "Precedência no talão inválida",                                          // 106
    "Unidade incompatível com o País",                                        // 107
    "Nome da pessoa inválida",                                                // 108
    "E-Mail inválido",                                                        // 109
    "Zona inválida",                                                          // 110
    "Matrícula inválida",                                                     // 111
    "Área utilizada inválida",                                                // 112
    "Quantidade de proprietários inválida",                                   // 113
    "Sequência inválida",                                                     // 114
    "Mensagem inválida",                                                      // 115
    "Quantidade de TR110 inválida",                                           // 116
    "Quantidade de TR111 inválida",                                           // 117
    "Quantidade de TR115 inválida",                                           // 118
    "Quantidade de TR120 inválida",                                           // 119
    "Quantidade de TR125 inválida",                                           // 120
    "Quantidade de TR130 inválida",                                           // 121
    "Quantidade de TR140 inválida",                                           // 122
    "Quantidade de TR145 inválida",                                           // 123
    "Quantidade de TR197 inválida",                                           // 124
    "Solicitação Rejeitada",                                                  // 125
    "Sincronismo com dados informados",                                       // 126
    "Inclusao/Alteracao com dados informados",                                // 127
    "Quantidade de TR196 inválida",                                           // 128
    "Caracter inválido:#",                                                    // 129
};

}  // namespace

std::string_view TextoAdvertencia(int codigo) {
  if (codigo < 1 || codigo > static_cast<int>(std::size(kMensagens))) return {};
  return kMensagens[codigo - 1];
}

}  // namespace fichas

std::string clsQuorvMsgFichas::MensagemAdvertenciaFichas(const int16_t& nCodigoAdvertencia) const {
  return std::string(fichas::TextoAdvertencia(nCodigoAdvertencia));
}

}  // namespace quorv
