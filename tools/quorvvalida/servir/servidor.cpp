#include "servidor.hpp"

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <random>
#include <system_error>
#include <thread>

#include <fmt/core.h>
#include <nlohmann/json.hpp>

#include "execucao.hpp"
#include "openapi.hpp"
#include "quorvvalida/quorvvalida.hpp"
#include "recepcao.hpp"

namespace quorv::servico {
namespace {

using httplib::Request;
using httplib::Response;
using Clock = std::chrono::steady_clock;

// Name of the uploaded file and of the return file inside a request's directory.
constexpr const char* kArquivo = "remessa";
constexpr const char* kRetorno = "RETORNO.TXT";

// The kinds of problem the service answers, with their titles.
struct TipoDeProblema {
  const char* tipo;
  const char* titulo;
};
constexpr TipoDeProblema kProblemas[] = {
    {"rota-desconhecida", "Rota desconhecida"},
    {"metodo-nao-permitido", "Método não permitido nesta rota"},
    {"caminho-invalido", "Caminho inválido"},
    {"nao-autorizado", "Token ausente ou inválido"},
    {"comprimento-ausente", "Falta o comprimento do corpo"},
    {"corpo-vazio", "Corpo vazio"},
    {"corpo-grande", "Corpo maior que o limite"},
    {"tipo-de-conteudo", "Tipo de conteúdo não aceito"},
    {"formato-nao-aceito", "Nenhum formato aceito pelo cliente"},
    {"parametro-invalido", "Parâmetro inválido"},
    {"servico-ocupado", "Serviço ocupado"},
    {"tempo-esgotado", "Tempo esgotado"},
    {"formulario-invalido", "Formulário inválido"},
    {"requisicao-invalida", "Requisição inválida"},
    {"pagina-ausente", "Página não instalada"},
    {"tipo-nao-identificado", "Tipo do arquivo não identificado"},
    {"codigo-invalido", "Código de advertência inválido"},
    {"sem-espaco", "Sem espaço para o arquivo"},
    {"falha-interna", "Falha interna"},
};

const char* TituloDe(const std::string& tipo) {
  for (const TipoDeProblema& problema : kProblemas) {
    if (tipo == problema.tipo) return problema.titulo;
  }
  return "Erro";
}

// The kind of problem behind a status the HTTP library answers by itself.
const char* TipoDoStatus(int status) {
  switch (status) {
    case 404:
      return "rota-desconhecida";
    case 405:
      return "metodo-nao-permitido";
    case 408:
      return "tempo-esgotado";
    case 413:
      return "corpo-grande";
    case 415:
      return "tipo-de-conteudo";
    case 503:
      return "servico-ocupado";
    default:
      return status >= 500 ? "falha-interna" : "requisicao-invalida";
  }
}

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

// The answer's body is sent and then the connection is closed: the request's body was not read
// to its end, and what is left of it must not be taken for the next request.
void FechaAoResponder(Response& res) {
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
        // Failing here is how the library is told to close.
        return false;
      });
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

// A file of the request's directory sent as the answer's body, a block at a time; the
// directory goes away when the answer is done with it.
void EnviaArquivo(Response& res, const std::shared_ptr<DiretorioTemporario>& diretorio,
                  const std::string& caminho, const std::string& tipoDeConteudo,
                  const Configuracao& configuracao, const std::shared_ptr<std::uint64_t>& enviados,
                  const std::atomic<bool>& encerrando) {
  struct Aberto {
    int descritor = -1;
    std::shared_ptr<DiretorioTemporario> diretorio;
    ~Aberto() {
      if (descritor >= 0) ::close(descritor);
    }
  };
  auto aberto = std::make_shared<Aberto>();
  aberto->diretorio = diretorio;
  aberto->descritor = ::open(caminho.c_str(), O_RDONLY | O_CLOEXEC);
  struct stat dados {};
  if (aberto->descritor < 0 || ::fstat(aberto->descritor, &dados) != 0) {
    res.set_content("", tipoDeConteudo);
    return;
  }
  const auto inicio = Clock::now();
  const double base = configuracao.tempoEscrita;
  const double taxa = static_cast<double>(configuracao.taxaMinima);
  const auto total = static_cast<std::size_t>(dados.st_size);
  res.set_content_provider(
      total, tipoDeConteudo,
      [aberto, enviados, inicio, base, taxa, total, &encerrando](
          std::size_t desde, std::size_t tamanho, httplib::DataSink& sink) {
        // A client that reads too slowly is let go, as one that sends too slowly is.
        const double permitido = base + static_cast<double>(desde) / taxa;
        if (std::chrono::duration<double>(Clock::now() - inicio).count() > permitido) return false;
        char bloco[64 * 1024];
        const ssize_t lidos = ::pread(aberto->descritor, bloco, std::min(tamanho, sizeof bloco),
                                      static_cast<off_t>(desde));
        if (lidos <= 0) return false;
        if (!sink.write(bloco, static_cast<std::size_t>(lidos))) return false;
        *enviados += static_cast<std::uint64_t>(lidos);
        // While the service stops, the connection ends with this answer (failing after the
        // last byte is how the library is told to close).
        return !(encerrando && desde + static_cast<std::size_t>(lidos) == total);
      });
}

}  // namespace

Servidor::Servidor(const Configuracao& configuracao, std::optional<Autorizacao> autorizacao,
                   std::unique_ptr<DiretorioTemporario> base)
    : configuracao_(configuracao),
      autorizacao_(std::move(autorizacao)),
      base_(std::move(base)),
      admissao_(configuracao.trabalhadores, configuracao.fila),
      prefixoId_(PrefixoAleatorio()) {
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
  // The listening socket is kept, so that stopping can close it while the connections already
  // taken are still answered in full.
  servidor_.set_socket_options([this](socket_t socket) {
    httplib::default_socket_options(socket);
    escuta_ = socket;
  });
  servidor_.set_payload_max_length(configuracao.limiteCorpo);

  std::error_code erro;
  if (!configuracao.pagina.empty() && std::filesystem::is_directory(configuracao.pagina, erro) &&
      servidor_.set_mount_point("/", configuracao.pagina)) {
    pagina_ = configuracao.pagina;
  }

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
        Problema(res, res.status, TipoDoStatus(res.status),
                 res.status == 404 ? "nada encontrado em " + ParaRegistro(req.path)
                                   : "a requisição não pôde ser atendida",
                 false);
        return httplib::Server::HandlerResponse::Handled;
      }));
  servidor_.set_exception_handler([this](const Request& req, Response& res, std::exception_ptr) {
    Problema(res, 500, "falha-interna", "falha inesperada ao atender a requisição", TemCorpo(req));
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
  }
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

void Servidor::Problema(Response& res, int status, const std::string& tipo,
                        const std::string& detalhe, bool fechar) const {
  res.status = status;
  nlohmann::json corpo = {
      {"type", "urn:quorvvalida:problema:" + tipo},
      {"title", TituloDe(tipo)},
      {"status", status},
      {"detail", detalhe},
  };
  const std::string id = res.get_header_value("X-Request-Id");
  if (!id.empty()) corpo["id_requisicao"] = id;
  res.set_content(corpo.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace) + "\n",
                  "application/problem+json");
  if (fechar) FechaAoResponder(res);
}

bool Servidor::Triagem(const Request& req, Response& res) {
  Contexto& contexto = AbreContexto(req, res);
  const bool corpo = TemCorpo(req);
  if (TemSegmentoPai(req.path)) {
    Problema(res, 400, "caminho-invalido", "o caminho não pode ter segmentos \"..\"", corpo);
    return false;
  }
  const Encontro encontro = Encontra(req.method, req.path);
  if (encontro.rota == nullptr) {
    const bool leitura = req.method == "GET" || req.method == "HEAD";
    if (encontro.status == 404 && leitura && !corpo) {
      // Any other path is the browser page's.
      contexto.pagina = true;
      if (!pagina_.empty()) return true;
      Problema(res, 404, "pagina-ausente",
               "a página do navegador não está instalada em " +
                   (configuracao_.pagina.empty() ? std::string("(nenhum diretório)")
                                                 : configuracao_.pagina) +
                   "; informe o diretório com --pagina",
               false);
      return false;
    }
    if (encontro.status == 405) {
      res.set_header("Allow", encontro.permitidos);
      Problema(res, 405, "metodo-nao-permitido",
               fmt::format("{} aceita {}, não {}", ParaRegistro(req.path), encontro.permitidos,
                           ParaRegistro(req.method)),
               corpo);
    } else {
      Problema(res, 404, "rota-desconhecida",
               "nenhuma rota atende " + ParaRegistro(req.method) + " " + ParaRegistro(req.path),
               corpo);
    }
    return false;
  }
  const Rota& rota = *encontro.rota;
  contexto.rota = &rota;
  if (encerrando_ && rota.recebeArquivo) {
    res.set_header("Retry-After", "1");
    Problema(res, 503, "servico-ocupado",
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
      Problema(res, 401, "nao-autorizado",
               ausente ? "envie o token no cabeçalho Authorization: Bearer TOKEN"
                       : "o token enviado não é o deste serviço",
               corpo);
      return false;
    }
  }
  Parametros parametros;
  if (const std::optional<std::string> erro = LeParametros(req.params, rota.destino, parametros)) {
    Problema(res, 400, "parametro-invalido", *erro, corpo);
    return false;
  }
  if (rota.escolheFormato && !NegociaFormato(req.get_header_value("Accept"))) {
    Problema(res, 406, "formato-nao-aceito",
             "as respostas desta rota são application/json ou text/plain", corpo);
    return false;
  }
  if (!rota.recebeArquivo) {
    if (corpo) {
      Problema(res, 400, "requisicao-invalida", "esta rota não recebe corpo", true);
      return false;
    }
    return true;
  }

  // The file: its length first, so that nothing past the limit is ever read.
  const bool emPedacos = req.has_header("Transfer-Encoding");
  if (emPedacos && req.get_header_value("Transfer-Encoding") != "chunked") {
    Problema(res, 400, "requisicao-invalida", "Transfer-Encoding aceito: chunked", true);
    return false;
  }
  if (!emPedacos) {
    if (!req.has_header("Content-Length")) {
      Problema(res, 411, "comprimento-ausente",
               "envie o arquivo no corpo, com Content-Length ou em pedaços (chunked)", false);
      return false;
    }
    const std::optional<std::uint64_t> comprimento =
        LeComprimento(req.get_header_value("Content-Length"));
    if (!comprimento) {
      Problema(res, 400, "requisicao-invalida", "Content-Length inválido", true);
      return false;
    }
    if (*comprimento == 0) {
      Problema(res, 400, "corpo-vazio",
               "o corpo está vazio: envie o arquivo como corpo ou no campo arquivo de um "
               "formulário multipart/form-data",
               false);
      return false;
    }
    if (*comprimento > configuracao_.limiteCorpo) {
      Problema(res, 413, "corpo-grande",
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
    Problema(res, 415, "tipo-de-conteudo",
             "envie o arquivo como application/octet-stream, text/plain ou no campo arquivo de "
             "um formulário multipart/form-data (recebido: " +
                 ParaRegistro(midia) + ")",
             true);
    return false;
  }
  if (!admissao_.TemVaga()) {
    res.set_header("Retry-After", std::to_string(admissao_.SegundosParaTentarDeNovo()));
    Problema(res, 503, "servico-ocupado",
             "todas as validações e a fila estão ocupadas; tente de novo mais tarde", true);
    return false;
  }
  return true;
}

void Servidor::Recebe(const Rota& rota, const Request& req, Response& res,
                      const httplib::ContentReader& leitor) {
  std::optional<Admissao::Vaga> vaga = admissao_.Reserva();
  if (!vaga) {
    res.set_header("Retry-After", std::to_string(admissao_.SegundosParaTentarDeNovo()));
    Problema(res, 503, "servico-ocupado",
             "todas as validações e a fila estão ocupadas; tente de novo mais tarde", true);
    return;
  }
  std::string erro;
  std::shared_ptr<DiretorioTemporario> diretorio =
      DiretorioTemporario::Cria(base_->Caminho(), "req.", erro);
  if (!diretorio) {
    Problema(res, 500, "falha-interna", "não foi possível preparar o diretório da validação", true);
    return;
  }
  const std::string arquivo = diretorio->Arquivo(kArquivo);
  Recepcao recepcao(
      arquivo, {configuracao_.limiteCorpo, configuracao_.tempoLeitura, configuracao_.taxaMinima});
  if (!recepcao.Aberta()) {
    Problema(res, 500, "falha-interna", "não foi possível gravar o arquivo recebido", true);
    return;
  }
  const bool formulario = req.is_multipart_form_data();
  const auto recebe = [&recepcao](const char* dados, std::size_t tamanho) {
    return recepcao.Recebe(dados, tamanho);
  };
  const bool lido = formulario ? leitor(
                                     [&recepcao](const httplib::MultipartFormData& campo) {
                                       return recepcao.Campo(campo.name);
                                     },
                                     recebe)
                               : leitor(recebe);
  const bool gravado = recepcao.Conclui();
  if (Contexto* contexto = ContextoDe(req)) contexto->recebidos = recepcao.Bytes();
  if (!lido || !gravado) {
    switch (recepcao.Motivo()) {
      case Recepcao::Falha::kGrande:
        Problema(res, 413, "corpo-grande",
                 fmt::format("o arquivo passou do limite deste serviço, {} bytes",
                             configuracao_.limiteCorpo),
                 true);
        break;
      case Recepcao::Falha::kLenta:
        Problema(res, 408, "tempo-esgotado", "o corpo chegou devagar demais", true);
        break;
      case Recepcao::Falha::kEscrita:
        Problema(res, 507, "sem-espaco", "o arquivo recebido não pôde ser gravado", true);
        break;
      case Recepcao::Falha::kCampo:
        Problema(res, 400, "formulario-invalido",
                 "o formulário deve ter um só campo, arquivo, com o arquivo a validar", true);
        break;
      case Recepcao::Falha::kNenhuma:
        if (recepcao.SegundosParado() >= configuracao_.tempoLeitura * 0.9) {
          Problema(res, 408, "tempo-esgotado",
                   fmt::format("nenhum byte do corpo chegou em {} s", configuracao_.tempoLeitura),
                   true);
        } else if (formulario) {
          Problema(res, 400, "formulario-invalido",
                   "o corpo não é um formulário multipart/form-data bem formado", true);
        } else {
          Problema(res, 400, "requisicao-invalida", "o corpo chegou incompleto", true);
        }
        break;
    }
    return;
  }
  if (formulario && !recepcao.RecebeuCampo()) {
    Problema(res, 400, "formulario-invalido", "falta o campo arquivo, com o arquivo a validar",
             false);
    return;
  }

  Parametros parametros;
  LeParametros(req.params, rota.destino, parametros);
  const Formato formato = NegociaFormato(req.get_header_value("Accept")).value_or(Formato::kJson);
  auto enviados = std::make_shared<std::uint64_t>(0);
  if (Contexto* contexto = ContextoDe(req)) contexto->enviados = enviados;

  std::optional<ferramenta::Tipo> tipo;
  if (rota.destino == Destino::kNotas || rota.destino == Destino::kWebNotas) {
    tipo = ferramenta::Tipo::kNotas;
  } else if (rota.destino == Destino::kFichas || rota.destino == Destino::kWebFichas) {
    tipo = ferramenta::Tipo::kFichas;
  } else if (rota.destino == Destino::kAuto) {
    const ferramenta::Identificacao identificacao = ferramenta::IdentificaTipo(arquivo);
    if (!identificacao.identificado) {
      Problema(res, 422, "tipo-nao-identificado",
               fmt::format("a primeira linha do arquivo tem {} caracteres, e são esperados 160 "
                           "(notas fiscais de produtor) ou 260 (ficha cadastral); use /v1/notas "
                           "ou /v1/fichas para escolher",
                           identificacao.comprimento),
               false);
      return;
    }
    tipo = identificacao.tipo;
  }

  vaga->AguardaTrabalhador();
  if (rota.destino == Destino::kNotas || rota.destino == Destino::kFichas ||
      rota.destino == Destino::kAuto) {
    const ResultadoValidacao resultado = Valida(*tipo, arquivo, diretorio->Caminho(), parametros);
    vaga.reset();
    metricas_.Validacao(ferramenta::NomeDoTipo(resultado.tipo), recepcao.Bytes(), recepcao.Linhas(),
                        static_cast<std::int64_t>(resultado.advertencias));
    res.set_header("X-Quorv-Tipo", ferramenta::NomeDoTipo(resultado.tipo));
    res.set_header("X-Quorv-Status", std::to_string(resultado.status));
    res.set_header("X-Quorv-Numero-Remessa", ParaCabecalho(resultado.numeroRemessa));
    res.set_header("X-Quorv-Advertencias", std::to_string(resultado.advertencias));
    if (formato == Formato::kTexto) {
      EnviaArquivo(res, diretorio, diretorio->Arquivo("ADVERTENCIAS.TXT"),
                   "text/plain; charset=windows-1252", configuracao_, enviados, encerrando_);
    } else {
      Problema(res, 501, "falha-interna", "JSON ainda não disponível", false);
    }
    return;
  }

  std::optional<std::string> tipoDoc;
  if (rota.destino == Destino::kWebTipo) tipoDoc = req.matches[1].str();
  const ResultadoWeb resultado =
      ValidaWeb(tipo, tipoDoc, arquivo, diretorio->Caminho(), kRetorno, parametros);
  vaga.reset();
  if (resultado.tipo) {
    metricas_.Validacao(ferramenta::NomeDoTipo(*resultado.tipo), recepcao.Bytes(),
                        recepcao.Linhas(), -1);
    res.set_header("X-Quorv-Tipo", ferramenta::NomeDoTipo(*resultado.tipo));
  }
  res.set_header("X-Quorv-Resultado", resultado.resultado ? "true" : "false");
  res.set_header("X-Quorv-Numero-Remessa", ParaCabecalho(resultado.numeroRemessa));
  if (formato == Formato::kTexto) {
    EnviaArquivo(res, diretorio, diretorio->Arquivo(kRetorno), "text/plain; charset=windows-1252",
                 configuracao_, enviados, encerrando_);
  } else {
    Problema(res, 501, "falha-interna", "JSON ainda não disponível", false);
  }
}

void Servidor::Consulta(const Rota& rota, const Request& req, Response& res) {
  switch (rota.destino) {
    case Destino::kSaude: {
      const Admissao::Estado estado = admissao_.Consulta();
      const bool pronto = !encerrando_ && estado.admitidas < estado.trabalhadores + estado.fila;
      const nlohmann::json corpo = {
          {"status", encerrando_ ? "encerrando"
                     : pronto    ? "pronto"
                                 : "ocupado"},
          {"pronto", pronto},
          {"trabalhadores", estado.trabalhadores},
          {"fila", estado.fila},
          {"validando", estado.validando},
          {"aguardando", estado.aguardando},
          {"admitidas", estado.admitidas},
      };
      res.status = pronto ? 200 : 503;
      if (!pronto)
        res.set_header("Retry-After", std::to_string(admissao_.SegundosParaTentarDeNovo()));
      res.set_content(corpo.dump() + "\n", "application/json");
      return;
    }
    case Destino::kOpenApi:
      res.set_content(DescricaoOpenApi(), "application/json");
      return;
    case Destino::kMetricas:
      res.set_content(metricas_.Texto(admissao_.Consulta()),
                      "text/plain; version=0.0.4; charset=utf-8");
      return;
    case Destino::kMensagemNotas:
    case Destino::kMensagemFichas: {
      const std::string codigo = req.matches[1].str();
      std::size_t usados = 0;
      int valor = 0;
      try {
        valor = std::stoi(codigo, &usados);
      } catch (const std::exception&) {
        usados = 0;
      }
      if (usados == 0 || usados != codigo.size() || valor < INT16_MIN || valor > INT16_MAX) {
        Problema(
            res, 400, "codigo-invalido",
            "código de advertência inválido: " + ParaRegistro(codigo) + " (use um número inteiro)",
            false);
        return;
      }
      const auto curto = static_cast<std::int16_t>(valor);
      const std::string texto = rota.destino == Destino::kMensagemNotas
                                    ? clsQuorvMsg().MensagemAdvertencia(curto)
                                    : clsQuorvMsgFichas().MensagemAdvertenciaFichas(curto);
      if (NegociaFormato(req.get_header_value("Accept")) == Formato::kTexto) {
        res.set_content(texto + "\n", "text/plain; charset=utf-8");
      } else {
        Problema(res, 501, "falha-interna", "JSON ainda não disponível", false);
      }
      return;
    }
    default:
      Problema(res, 501, "falha-interna", "ainda não disponível", false);
      return;
  }
}

void Servidor::Registra(const Request& req, const Response& res) {
  const std::optional<Contexto> contexto = TiraContexto(req);
  const std::string id = contexto ? contexto->id : res.get_header_value("X-Request-Id");
  std::string rota = "desconhecida";
  std::string mostrada = ParaRegistro(req.path);
  if (contexto && contexto->rota != nullptr) {
    rota = contexto->rota->modelo;
  } else if (contexto && contexto->pagina) {
    rota = "pagina";
  }
  std::uint64_t enviados = res.body.size();
  if (contexto && contexto->enviados)
    enviados = *contexto->enviados;
  else if (res.content_provider_)
    enviados = res.content_length_;
  std::string duracao = "-";
  double segundos = 0;
  if (contexto) {
    segundos = std::chrono::duration<double>(Clock::now() - contexto->inicio).count();
    duracao = fmt::format("{:.0f}", segundos * 1000);
  }
  std::fputs(
      fmt::format("{} {} {} {} recebidos={} enviados={} ms={} id={}\n", HoraUtc(),
                  ParaRegistro(req.method), mostrada, res.status,
                  contexto ? contexto->recebidos : 0, enviados, duracao, id.empty() ? "-" : id)
          .c_str(),
      stderr);
  metricas_.Requisicao(rota, RotuloDoMetodo(req.method), res.status, segundos);
}

}  // namespace quorv::servico
