<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>ui</name>
    <message>
        <source>Press Connect to connect to %1.</source>
        <translation>点击“连接”以连接到“%1”</translation>
    </message>
    <message>
        <source>Add the gateway that your administrator gave you.</source>
        <translation>请添加管理员提供的网关</translation>
    </message>
    <message>
        <source>Search connections</source>
        <translation>搜索连接</translation>
    </message>
    <message>
        <source>No matching connections</source>
        <translation>无匹配的连接</translation>
    </message>
    <message>
        <source>Another session is using the backend service</source>
        <translation>另一个会话正在使用后台服务</translation>
    </message>
    <message>
        <source>Continue in the browser</source>
        <translation>请在浏览器中继续</translation>
    </message>
    <message>
        <source>Log in on the page that has been opened. %1</source>
        <translation>请在打开的页面上登录，%1</translation>
    </message>
    <message>
        <source>Open the page again</source>
        <translation>重新打开页面</translation>
    </message>
    <message>
        <source>Met</source>
        <translation>已满足</translation>
    </message>
    <message>
        <source>Not met yet</source>
        <translation>尚未满足</translation>
    </message>
    <message>
        <source>The connection needs your attention first. Change the password afterwards.</source>
        <translation>连接需要您先处理，请稍后再修改密码</translation>
    </message>
    <message>
        <source>Time left: %1</source>
        <translation>剩余时间：%1</translation>
    </message>
    <message>
        <source>Received</source>
        <translation>接收</translation>
    </message>
    <message>
        <source>Sent</source>
        <translation>发送</translation>
    </message>
    <message>
        <source>%1 packets</source>
        <translation>%1 个数据包</translation>
    </message>
    <message>
        <source>Compression, received</source>
        <translation>接收压缩率</translation>
    </message>
    <message>
        <source>Compression, sent</source>
        <translation>发送压缩率</translation>
    </message>
    <message>
        <source>The token takes only a few more wrong PINs.</source>
        <translation>该令牌只允许再输错几次 PIN 码</translation>
    </message>
    <message>
        <source>The token takes one more PIN; a wrong one locks it.</source>
        <translation>该令牌只允许再输入一次 PIN 码，输错将被锁定</translation>
    </message>
    <message>
        <source>The token is locked.</source>
        <translation>该令牌已被锁定</translation>
    </message>
    <message>
        <source>The PIN is wrong</source>
        <translation>PIN 码错误</translation>
    </message>
    <message>
        <source>The token is locked after too many wrong PINs</source>
        <translation>PIN 码输错次数过多，令牌已被锁定</translation>
    </message>
    <message>
        <source>The token of the certificate is not there</source>
        <translation>未找到该证书所在的令牌</translation>
    </message>
    <message>
        <source>The token does not make the signature that is needed</source>
        <translation>该令牌不支持所需的签名方式</translation>
    </message>
    <message>
        <source>The token did not sign</source>
        <translation>令牌未能完成签名</translation>
    </message>
    <message>
        <source>No trusted certificates. Import the CA certificate that your administrator gave you.</source>
        <translation>暂无证书。请导入管理员提供的 CA 证书</translation>
    </message>
    <message>
        <source>%1 holds a private key and was not imported. Ask your administrator for the certificate alone.</source>
        <translation>%1 含有私钥，未导入。请向管理员索取不含私钥的证书</translation>
    </message>
    <message>
        <source>Do you trust every gateway that these certificates vouch for? Compare the fingerprints with those that your administrator gave you.</source>
        <translation>是否信任由这些证书签发或担保的所有网关？请将指纹与管理员提供的指纹进行核对。</translation>
    </message>
    <message>
        <source>File</source>
        <translation>文件</translation>
    </message>
    <message>
        <source>Subject</source>
        <translation>主题</translation>
    </message>
    <message>
        <source>Clear the search</source>
        <translation>清除搜索内容</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>搜索</translation>
    </message>
    <message>
        <source>More</source>
        <translation>更多</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>最小化</translation>
    </message>
    <message>
        <source>Please wait</source>
        <translation>请稍候</translation>
    </message>
    <message>
        <source>Public Address:</source>
        <translation>公网地址：</translation>
    </message>
    <message>
        <source>Server Address:</source>
        <translation>服务器地址：</translation>
    </message>
    <message>
        <source>Optimal Gateway:</source>
        <translation>最优网关：</translation>
    </message>
    <message>
        <source>Optimal Gateway Address:</source>
        <translation>最优网关地址：</translation>
    </message>
    <message>
        <source>No matching routes</source>
        <translation>无匹配的路由</translation>
    </message>
    <message>
        <source>No routes</source>
        <translation>暂无路由</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>Issuer</source>
        <translation>颁发者</translation>
    </message>
    <message>
        <source>Valid from</source>
        <translation>生效时间</translation>
    </message>
    <message>
        <source>Valid to</source>
        <translation>失效时间</translation>
    </message>
    <message>
        <source>Expired</source>
        <translation>已过期</translation>
    </message>
    <message>
        <source>Not yet valid</source>
        <translation>尚未生效</translation>
    </message>
    <message>
        <source>Opening the certificate...</source>
        <translation>正在打开证书…</translation>
    </message>
    <message>
        <source>This file would take too long to open. Export the certificate again with fewer than 2,000,000 iterations.</source>
        <translation>打开此文件耗时过长。请以少于 2,000,000 次的迭代重新导出证书。</translation>
    </message>
    <message>
        <source>Show details</source>
        <translation>展开详情</translation>
    </message>
    <message>
        <source>Hide details</source>
        <translation>收起详情</translation>
    </message>
    <message>
        <source>No certificates. Import the .p12 or .pfx file that your administrator gave you.</source>
        <translation>暂无证书。请导入管理员提供的 .p12 或 .pfx 文件</translation>
    </message>
    <message>
        <source>Refresh</source>
        <translation>刷新</translation>
    </message>
    <message>
        <source>Verbose</source>
        <translation>详细</translation>
    </message>
    <message>
        <source>Debug</source>
        <translation>调试</translation>
    </message>
    <message>
        <source>Information</source>
        <translation>信息</translation>
    </message>
    <message>
        <source>Version: %1
BuildID: %2</source>
        <translation>版本：%1
构建号：%2</translation>
    </message>
    <message>
        <source>Your administrator can tell you the gateway, your account and the certificate to use.#@@#Support may ask for the log files:
%1</source>
        <translation>网关、账号和证书信息请向管理员咨询#@@#技术支持可能需要以下日志文件：
%1</translation>
    </message>
    <message>
        <source>Open Log Folder</source>
        <translation>打开日志文件夹</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>启动</translation>
    </message>
    <message>
        <source>Start when you log in</source>
        <translation>登录系统后自动启动</translation>
    </message>
    <message>
        <source>Connect automatically at start</source>
        <translation>启动后自动连接</translation>
    </message>
    <message>
        <source>Connection</source>
        <translation>连接</translation>
    </message>
    <message>
        <source>Reconnect automatically after an interruption</source>
        <translation>连接中断后自动重连</translation>
    </message>
    <message>
        <source>Minimize the window once connected</source>
        <translation>连接成功后最小化窗口</translation>
    </message>
    <message>
        <source>Show notifications about the connection</source>
        <translation>显示连接状态通知</translation>
    </message>
    <message>
        <source>Update automatically</source>
        <translation>自动更新</translation>
    </message>
    <message>
        <source>Certificates</source>
        <translation>证书</translation>
    </message>
    <message>
        <source>Starting at login could not be changed.#@@#%1</source>
        <translation>无法更改自动启动设置#@@#%1</translation>
    </message>
    <message>
        <source>Show what is typed</source>
        <translation>显示输入内容</translation>
    </message>
    <message>
        <source>Hide what is typed</source>
        <translation>隐藏输入内容</translation>
    </message>
    <message>
        <source>Advanced Settings</source>
        <translation>高级设置</translation>
    </message>
    <message>
        <source>Select Optimal Channel</source>
        <translation>选择最优通道</translation>
    </message>
    <message>
        <source>SPA Mode:</source>
        <translation>SPA 模式：</translation>
    </message>
    <message>
        <source>SPA Port:</source>
        <translation>SPA 端口：</translation>
    </message>
    <message>
        <source>Detect Nearest Gateway</source>
        <translation>探测最近网关</translation>
    </message>
    <message>
        <source>Preferred Gateway:</source>
        <translation>首选网关：</translation>
    </message>
    <message>
        <source>Next Step</source>
        <translation>下一步</translation>
    </message>
    <message>
        <source>and %L1 more</source>
        <translation>另有 %L1 项</translation>
    </message>
    <message>
        <source>The service does not answer</source>
        <translation>后台服务没有响应</translation>
    </message>
    <message>
        <source>No word from the service since %1. What you see may be out of date.</source>
        <translation>自 %1 起后台服务没有消息，所示内容可能已过时</translation>
    </message>
    <message>
        <source>The settings could not be saved</source>
        <translation>设置未能保存</translation>
    </message>
    <message>
        <source>A name cannot contain &quot;%1&quot;.</source>
        <translation>名称中不能包含“%1”</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is reserved.</source>
        <translation>“%1”为保留名称</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1：%2</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>Connects only to servers whose certificate you trust.</source>
        <translation>只连接证书受您信任的服务器</translation>
    </message>
    <message>
        <source>Uses the fastest of the server's addresses.</source>
        <translation>使用服务器响应最快的地址</translation>
    </message>
    <message>
        <source>Looks for the gateway that answers first.</source>
        <translation>查找最先响应的网关</translation>
    </message>
    <message>
        <source>Taken as long as it answers.</source>
        <translation>只要有响应就使用该网关</translation>
    </message>
    <message>
        <source>Knocks before it connects.</source>
        <translation>连接之前先敲门</translation>
    </message>
    <message>
        <source>Where the server waits for the knock.</source>
        <translation>服务器等待敲门的端口</translation>
    </message>
    <message>
        <source>Steadier, but slower, on bad lines.</source>
        <translation>线路差时更稳定，但速度较慢</translation>
    </message>
    <message>
        <source>No trusted certificate has been imported yet.</source>
        <translation>尚未导入受信任的证书</translation>
    </message>
    <message>
        <source>Import one</source>
        <translation>导入证书</translation>
    </message>
    <message>
        <source>Caps Lock is on</source>
        <translation>大写锁定已打开</translation>
    </message>
    <message>
        <source>Your browser opens to log in.</source>
        <translation>将打开浏览器进行登录</translation>
    </message>
    <message>
        <source>Closes in %1 s</source>
        <translation>%1 秒后关闭</translation>
    </message>
    <message>
        <source>Valid until %1</source>
        <translation>有效期至 %1</translation>
    </message>
    <message>
        <source>Asking for the certificates...</source>
        <translation>正在获取证书…</translation>
    </message>
    <message>
        <source>No certificates. Insert the USB key and press Refresh.</source>
        <translation>暂无证书。请插入 USBKey 并点击“刷新”</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1（%2）</translation>
    </message>
    <message>
        <source>Interrupted since %1. The connection is being made again.</source>
        <translation>连接自 %1 起中断，正在重新连接</translation>
    </message>
    <message>
        <source>%1 ended at %2 after %3</source>
        <translation>“%1”已于 %2 结束，时长 %3</translation>
    </message>
    <message>
        <source>%1 could not be connected at %2</source>
        <translation>“%1”于 %2 连接失败</translation>
    </message>
    <message>
        <source>The service on this computer does not answer. Trying again … If this lasts, restart the computer or ask your administrator.</source>
        <translation>本机的后台服务没有响应，正在重试。如果一直如此，请重启计算机或联系管理员。</translation>
    </message>
    <message>
        <source>Waiting for your answer</source>
        <translation>等待您的操作</translation>
    </message>
    <message>
        <source>Logging in</source>
        <translation>正在登录</translation>
    </message>
    <message>
        <source>%1, %2 s</source>
        <translation>%1，%2 秒</translation>
    </message>
    <message>
        <source>Restart the computer. If this stays, ask your administrator.</source>
        <translation>请重启计算机。如果仍然如此，请联系管理员。</translation>
    </message>
    <message>
        <source>Connect again</source>
        <translation>重新连接</translation>
    </message>
    <message>
        <source>The link to the backend service was lost</source>
        <translation>与后台服务的连接已断开</translation>
    </message>
    <message>
        <source>The counters come back with the connection.</source>
        <translation>连接恢复后显示统计信息</translation>
    </message>
    <message>
        <source>Copy All</source>
        <translation>全部复制</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>复制</translation>
    </message>
    <message>
        <source>No addresses</source>
        <translation>暂无地址</translation>
    </message>
    <message>
        <source>bytes</source>
        <translation>字节</translation>
    </message>
    <message>
        <source>The window is in the tray. Click this icon to open it again.</source>
        <translation>窗口已收到托盘，点击此图标可重新打开</translation>
    </message>
</context>
</TS>
