#include "servidor.hpp"

#include <sys/socket.h>

#include <cstdio>
#include <ctime>
#include <random>

#include <fmt/core.h>

#include "problemas.hpp"

namespace quorv::servico {
namespace {

using httplib::Request;
using httplib::Response;
using Clock = std::chrono::steady_clock;

std::string ChaveDe(const Request& req) {
  return req.remote_addr + "|" + std::to_string(req.remote_port);
}

// True when the request carries a body: a length above zero, or chunks.
bool TemCorpo(const Request& req) {
  if (req.has_header("Transfer-Encoding")) return true;
  if (!req.has_header("Content-Length")) return false;
  const std::optional<std::uint64_t> comprimento =
      LeComprimento(req.get_header_value("Content-Length"));
  return !comprimento || *comprimento > 0;
}

// The method as a metric label: the methods HTTP defines, or "outro".
std::string RotuloDoMetodo(const std::string& metodo) {
  for (const char* conhecido : {"GET", "HEAD", "POST", "PUT", "DELETE", "PATCH", "OPTIONS"}) {
    if (metodo == conhecido) return metodo;
  }
  return "outro";
}

std::string HoraUtc() {
  const auto agora = std::chrono::system_clock::now();
  const std::time_t segundos = std::chrono::system_clock::to_time_t(agora);
  std::tm partes{};
  gmtime_r(&segundos, &partes);
  const auto milissegundos =
      std::chrono::duration_cast<std::chrono::milliseconds>(agora.time_since_epoch()).count() %
      1000;
  return fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:02}.{:03}Z", partes.tm_year + 1900,
                     partes.tm_mon + 1, partes.tm_mday, partes.tm_hour, partes.tm_min,
                     partes.tm_sec, milissegundos);
}

std::string PrefixoAleatorio() {
  std::random_device fonte;
  return fmt::format("{:08x}", fonte());
}

}  // namespace

Servidor::Servidor(const Configuracao& configuracao, std::optional<Autorizacao> autorizacao,
                   std::unique_ptr<DiretorioTemporario> base)
    : configuracao_(configuracao),
      autorizacao_(autorizacao),
      base_(std::move(base)),
      admissao_(configuracao.trabalhadores, configuracao.fila),
      prefixoId_(PrefixoAleatorio()) {
  PreparaCatalogos();
  // Each connection is served by a thread of its own from a pool large enough for every
  // admitted validation and a margin for health checks, metrics and refusals, so that a busy
  // service still answers 503 instead of leaving connections unanswered.
  const std::size_t conexoes = configuracao.trabalhadores + configuracao.fila + 16;
  servidor_.new_task_queue = [conexoes] { return new httplib::ThreadPool(conexoes); };
  const auto segundos = [](double valor) {
    return std::chrono::duration_cast<std::chrono::microseconds>(
        std::chrono::duration<double>(valor));
  };
  servidor_.set_read_timeout(segundos(configuracao.tempoLeitura));
  servidor_.set_write_timeout(segundos(configuracao.tempoEscrita));
  servidor_.set_keep_alive_max_count(100);
  // Answers sent in pieces (a chunk's size, its bytes, its end) go out at once, not held back
  // waiting for the client's acknowledgement of the previous piece.
  servidor_.set_tcp_nodelay(true);
  // The listening socket is kept, so that stopping can close it while the connections already
  // taken are still answered in full.
  servidor_.set_socket_options([this](socket_t socket) {
    httplib::default_socket_options(socket);
    escuta_ = socket;
  });
  // A backstop: a declared length over the limit is answered 413 before routing, and a chunked
  // body is cut off as it arrives.
  servidor_.set_payload_max_length(configuracao.limiteCorpo);

  // The library mounts only a folder that is there.
  if (servidor_.set_mount_point("/", configuracao.pagina)) pagina_ = configuracao.pagina;

  servidor_.set_expect_100_continue_handler(
      [this](const Request& req, Response& res) { return Triagem(req, res) ? 100 : res.status; });
  servidor_.set_pre_routing_handler([this](const Request& req, Response& res) {
    return Triagem(req, res) ? httplib::Server::HandlerResponse::Unhandled
                             : httplib::Server::HandlerResponse::Handled;
  });
  servidor_.set_error_handler(
      httplib::Server::HandlerWithResponse([this](const Request& req, Response& res) {
        if (!res.has_header("X-Request-Id")) res.set_header("X-Request-Id", NovoId());
        if (!res.body.empty() || res.content_provider_) {
          return httplib::Server::HandlerResponse::Unhandled;
        }
        RespondeProblema(res, res.status, TipoDoStatus(res.status),
                         res.status == 404 ? "nada encontrado em " + ParaRegistro(req.path)
                                           : "a requisição não pôde ser atendida",
                         false);
        return httplib::Server::HandlerResponse::Handled;
      }));
  servidor_.set_exception_handler(
      [](const Request& req, Response& res, const std::exception_ptr& /*falha*/) {
        RespondeProblema(res, 500, "interno", "falha inesperada ao atender a requisição",
                         TemCorpo(req));
      });
  servidor_.set_post_routing_handler([this](const Request&, Response& res) {
    // While the service stops, each connection ends with the answer it is given.
    if (encerrando_ && !res.body.empty() && !res.content_provider_) FechaAoResponder(res);
  });
  servidor_.set_logger([this](const Request& req, const Response& res) { Registra(req, res); });

  for (const Rota& rota : Rotas()) {
    if (rota.recebeArquivo) {
      servidor_.Post(rota.padrao, [this, &rota](const Request& req, Response& res,
                                                const httplib::ContentReader& leitor) {
        Recebe(rota, req, res, leitor);
      });
    } else {
      servidor_.Get(rota.padrao,
                    [this, &rota](const Request& req, Response& res) { Consulta(rota, req, res); });
    }
  }
}

Servidor::~Servidor() = default;

int Servidor::Liga(std::string& erro) {
  const int porta = configuracao_.porta == 0
                        ? servidor_.bind_to_any_port(configuracao_.endereco)
                        : (servidor_.bind_to_port(configuracao_.endereco, configuracao_.porta)
                               ? configuracao_.porta
                               : -1);
  if (porta < 0) {
    erro = fmt::format("não foi possível escutar em {}:{}", configuracao_.endereco,
                       configuracao_.porta);
    return porta;
  }
  // The library listens with a queue of 5 connections not yet accepted; a burst of clients
  // would find it full and some be refused. Listening again only makes the queue longer (the
  // system caps it at net.core.somaxconn).
  ::listen(escuta_, 1024);
  return porta;
}

bool Servidor::Atende() {
  // Stopping makes the library's wait for connections fail, which it reports as a failure.
  return servidor_.listen_after_bind() || encerrando_;
}

void Servidor::Para() {
  encerrando_ = true;
  // Shutting the listening socket down ends the wait for new connections; the library then
  // waits for the connections it has to finish. Its own stop() would cut the answers being
  // sent short.
  const int socket = escuta_;
  if (socket >= 0) ::shutdown(socket, SHUT_RDWR);
}

std::string Servidor::NovoId() {
  return fmt::format("{}-{:06}", prefixoId_, ++contadorId_);
}

Servidor::Contexto& Servidor::AbreContexto(const Request& req, Response& res) {
  std::lock_guard<std::mutex> trava(travaContextos_);
  auto [posicao, novo] = contextos_.try_emplace(ChaveDe(req));
  Contexto& contexto = posicao->second;
  if (novo) {
    contexto.inicio = Clock::now();
    const std::string pedido = req.get_header_value("X-Request-Id");
    contexto.id = IdentificadorAceitavel(pedido) ? pedido : NovoId();
  }
  if (!res.has_header("X-Request-Id")) res.set_header("X-Request-Id", contexto.id);
  return contexto;
}

Servidor::Contexto* Servidor::ContextoDe(const Request& req) {
  std::lock_guard<std::mutex> trava(travaContextos_);
  const auto encontrado = contextos_.find(ChaveDe(req));
  return encontrado == contextos_.end() ? nullptr : &encontrado->second;
}

std::optional<Servidor::Contexto> Servidor::TiraContexto(const Request& req) {
  std::lock_guard<std::mutex> trava(travaContextos_);
  const auto encontrado = contextos_.find(ChaveDe(req));
  if (encontrado == contextos_.end()) return std::nullopt;
  Contexto contexto = std::move(encontrado->second);
  contextos_.erase(encontrado);
  return contexto;
}

std::shared_ptr<std::uint64_t> Servidor::ContadorDeEnvio(const Request& req) {
  auto enviados = std::make_shared<std::uint64_t>(0);
  if (Contexto* contexto = ContextoDe(req)) contexto->enviados = enviados;
  return enviados;
}

bool Servidor::EnvioNoPrazo(Clock::time_point inicio, std::uint64_t enviados) const {
  // A client that reads too slowly is let go, as one that sends too slowly is.
  const double permitido =
      configuracao_.tempoEscrita +
      static_cast<double>(enviados) / static_cast<double>(configuracao_.taxaMinima);
  return std::chrono::duration<double>(Clock::now() - inicio).count() <= permitido;
}

bool Servidor::Triagem(const Request& req, Response& res) {
  Contexto& contexto = AbreContexto(req, res);
  const bool corpo = TemCorpo(req);
  if (TemSegmentoPai(req.path)) {
    RespondeProblema(res, 400, "caminho_invalido", "o caminho não pode ter segmentos \"..\"",
                     corpo);
    return false;
  }
  const Encontro encontro = Encontra(req.method, req.path);
  if (encontro.rota == nullptr) {
    const bool leitura = req.method == "GET" || req.method == "HEAD";
    if (encontro.status == 404 && leitura && !corpo) {
      // Any other path is the browser page's.
      contexto.pagina = true;
      if (!pagina_.empty()) return true;
      RespondeProblema(res, 404, "pagina_ausente",
                       "a página do navegador não está instalada em " +
                           (configuracao_.pagina.empty() ? std::string("(nenhum diretório)")
                                                         : configuracao_.pagina) +
                           "; informe o diretório com --pagina",
                       false);
      return false;
    }
    if (encontro.status == 405) {
      res.set_header("Allow", encontro.permitidos);
      RespondeProblema(res, 405, "metodo_nao_permitido",
                       fmt::format("{} aceita {}, não {}", ParaRegistro(req.path),
                                   encontro.permitidos, ParaRegistro(req.method)),
                       corpo);
    } else {
      RespondeProblema(
          res, 404, "rota_desconhecida",
          "nenhuma rota atende " + ParaRegistro(req.method) + " " + ParaRegistro(req.path), corpo);
    }
    return false;
  }
  const Rota& rota = *encontro.rota;
  contexto.rota = &rota;
  if (encerrando_ && rota.recebeArquivo) {
    res.set_header("Retry-After", "1");
    RespondeProblema(res, 503, "servico_ocupado",
                     "o serviço está encerrando; envie a outra instância ou tente de novo", corpo);
    return false;
  }
  if (rota.protegida && autorizacao_) {
    const Autorizacao::Resultado resultado =
        autorizacao_->Confere(req.get_header_value("Authorization"));
    if (resultado != Autorizacao::Resultado::kAceito) {
      const bool ausente = resultado == Autorizacao::Resultado::kAusente;
      res.set_header("WWW-Authenticate",
                     ausente ? "Bearer realm=\"quorvvalida\""
                             : "Bearer realm=\"quorvvalida\", error=\"invalid_token\"");
      RespondeProblema(res, 401, "nao_autorizado",
                       ausente ? "envie o token no cabeçalho Authorization: Bearer TOKEN"
                               : "o token enviado não é o deste serviço",
                       corpo);
      return false;
    }
  }
  Parametros parametros;
  if (const std::optional<std::string> erro = LeParametros(req.params, rota.destino, parametros)) {
    RespondeProblema(res, 400, "uso", *erro, corpo);
    return false;
  }
  if (rota.escolheFormato && !NegociaFormato(req.get_header_value("Accept"))) {
    RespondeProblema(res, 406, "formato_nao_aceito",
                     "as respostas desta rota são application/json ou text/plain", corpo);
    return false;
  }
  if (!rota.recebeArquivo) {
    if (corpo) {
      RespondeProblema(res, 400, "requisicao_invalida", "esta rota não recebe corpo", true);
      return false;
    }
    return true;
  }

  // The file: its length first, so that nothing past the limit is ever read.
  const bool emPedacos = req.has_header("Transfer-Encoding");
  if (emPedacos && req.get_header_value("Transfer-Encoding") != "chunked") {
    RespondeProblema(res, 400, "requisicao_invalida", "Transfer-Encoding aceito: chunked", true);
    return false;
  }
  if (!emPedacos) {
    if (!req.has_header("Content-Length")) {
      RespondeProblema(res, 411, "comprimento_ausente",
                       "envie o arquivo no corpo, com Content-Length ou em pedaços (chunked)",
                       false);
      return false;
    }
    const std::optional<std::uint64_t> comprimento =
        LeComprimento(req.get_header_value("Content-Length"));
    if (!comprimento) {
      RespondeProblema(res, 400, "requisicao_invalida", "Content-Length inválido", true);
      return false;
    }
    if (*comprimento == 0) {
      RespondeProblema(res, 400, "corpo_vazio",
                       "o corpo está vazio: envie o arquivo como corpo ou no campo arquivo de um "
                       "formulário multipart/form-data",
                       false);
      return false;
    }
    if (*comprimento > configuracao_.limiteCorpo) {
      RespondeProblema(res, 413, "corpo_grande",
                       fmt::format("o corpo tem {} bytes, e o limite deste serviço é {} bytes",
                                   *comprimento, configuracao_.limiteCorpo),
                       true);
      return false;
    }
  }
  const std::string tipoDeConteudo = req.get_header_value("Content-Type");
  const std::string midia = tipoDeConteudo.substr(0, tipoDeConteudo.find(';'));
  // curl labels a raw body application/x-www-form-urlencoded unless told otherwise; the body
  // is taken as the file all the same.
  const bool aceito = midia.empty() || midia == "application/octet-stream" ||
                      midia == "text/plain" || midia == "application/x-www-form-urlencoded" ||
                      midia == "multipart/form-data";
  if (!aceito) {
    RespondeProblema(res, 415, "tipo_de_conteudo",
                     "envie o arquivo como application/octet-stream, text/plain ou no campo "
                     "arquivo de um formulário multipart/form-data (recebido: " +
                         ParaRegistro(midia) + ")",
                     true);
    return false;
  }
  if (!admissao_.TemVaga()) {
    RespondeOcupado(res);
    return false;
  }
  return true;
}

void Servidor::Registra(const Request& req, const Response& res) {
  const std::optional<Contexto> contexto = TiraContexto(req);
  const std::string id = contexto ? contexto->id : res.get_header_value("X-Request-Id");
  std::string rota = "desconhecida";
  if (contexto && contexto->rota != nullptr) {
    rota = contexto->rota->modelo;
  } else if (contexto && contexto->pagina) {
    rota = "pagina";
  }
  std::uint64_t enviados = res.body.size();
  if (contexto && contexto->enviados) {
    enviados = *contexto->enviados;
  } else if (res.content_provider_) {
    enviados = res.content_length_;
  }
  std::string duracao = "-";
  double segundos = 0;
  if (contexto) {
    segundos = std::chrono::duration<double>(Clock::now() - contexto->inicio).count();
    duracao = fmt::format("{:.0f}", segundos * 1000);
  }
  std::fputs(
      fmt::format("{} {} {} {} recebidos={} enviados={} ms={} id={}\n", HoraUtc(),
                  ParaRegistro(req.method), ParaRegistro(req.path), res.status,
                  contexto ? contexto->recebidos : 0, enviados, duracao, id.empty() ? "-" : id)
          .c_str(),
      stderr);
  metricas_.Requisicao(rota, RotuloDoMetodo(req.method), res.status, segundos);
}

}  // namespace quorv::servico
