#include "problemas.hpp"

#include <memory>
#include <utility>

#include <nlohmann/json.hpp>

namespace quorv::servico {
namespace {

struct Tipo {
  const char* tipo;
  const char* titulo;
};

// The service's kinds, and the tool's kinds that its answers use.
constexpr Tipo kTipos[] = {
    {"rota_desconhecida", "Rota desconhecida"},
    {"metodo_nao_permitido", "Método não permitido nesta rota"},
    {"caminho_invalido", "Caminho inválido"},
    {"nao_autorizado", "Token ausente ou inválido"},
    {"comprimento_ausente", "Falta o comprimento do corpo"},
    {"corpo_vazio", "Corpo vazio"},
    {"corpo_grande", "Corpo maior que o limite"},
    {"tipo_de_conteudo", "Tipo de conteúdo não aceito"},
    {"formato_nao_aceito", "Nenhum formato aceito pelo cliente"},
    {"servico_ocupado", "Serviço ocupado"},
    {"tempo_esgotado", "Tempo esgotado"},
    {"formulario_invalido", "Formulário inválido"},
    {"requisicao_invalida", "Requisição inválida"},
    {"pagina_ausente", "Página não instalada"},
    {"escrita_arquivo_recebido", "O arquivo recebido não pôde ser gravado"},
    {"uso", "Uso incorreto"},
    {"tipo_nao_identificado", "Tipo do arquivo não identificado"},
    {"interno", "Erro interno"},
};

std::string TituloDe(const std::string& tipo) {
  for (const Tipo& conhecido : kTipos) {
    if (tipo == conhecido.tipo) return conhecido.titulo;
  }
  // A kind of the library's failures, as the tool names them.
  return "Falha da validação (" + tipo + ")";
}

}  // namespace

void RespondeProblema(httplib::Response& res, int status, const std::string& tipo,
                      const std::string& detalhe, bool fechar) {
  res.status = status;
  nlohmann::json corpo = {
      {"type", "urn:quorvvalida:erro:" + tipo},
      {"title", TituloDe(tipo)},
      {"status", status},
      {"detail", detalhe},
      {"tipo", tipo},
  };
  const std::string id = res.get_header_value("X-Request-Id");
  if (!id.empty()) corpo["id_requisicao"] = id;
  res.set_content(corpo.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace) + "\n",
                  "application/problem+json");
  if (fechar) FechaAoResponder(res);
}

void FechaAoResponder(httplib::Response& res) {
  auto corpo = std::make_shared<std::string>(std::move(res.body));
  res.body.clear();
  const std::string tipo = res.get_header_value("Content-Type");
  res.headers.erase("Content-Type");
  res.headers.erase("Keep-Alive");
  res.headers.erase("Connection");
  res.set_header("Connection", "close");
  res.set_content_provider(
      corpo->size(), tipo,
      [corpo](std::size_t inicio, std::size_t tamanho, httplib::DataSink& sink) {
        sink.write(corpo->data() + inicio, tamanho);
        // Failing here is how the library is told to close the connection.
        return false;
      });
}

const char* TipoDoStatus(int status) {
  switch (status) {
    case 404:
      return "rota_desconhecida";
    case 405:
      return "metodo_nao_permitido";
    case 408:
      return "tempo_esgotado";
    case 413:
      return "corpo_grande";
    case 415:
      return "tipo_de_conteudo";
    case 503:
      return "servico_ocupado";
    default:
      return status >= 500 ? "interno" : "requisicao_invalida";
  }
}

}  // namespace quorv::servico
