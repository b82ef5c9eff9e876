-- wrk script: every request posts the same file as a raw body.
-- ARQUIVO names the file; ACEITA, when set, is sent as the Accept header.
local arquivo = assert(io.open(os.getenv("ARQUIVO"), "rb"))
wrk.method = "POST"
wrk.body = arquivo:read("*a")
arquivo:close()
wrk.headers["Content-Type"] = "application/octet-stream"
local aceita = os.getenv("ACEITA")
if aceita and aceita ~= "" then
  wrk.headers["Accept"] = aceita
end

local recusas = 0
response = function(status)
  if status ~= 200 then
    recusas = recusas + 1
  end
end

done = function()
  io.write(string.format("respostas diferentes de 200: %d\n", recusas))
end
