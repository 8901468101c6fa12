-- Negates an IEEE double: exact, the sign bit alone changes, of zero, infinity and nan too.
--   step sign:  the new sign
-- Latency 1 cycle.
library ieee;
use ieee.std_logic_1164.all;

entity dp_neg is
  port (sysclk, reset, enable : in std_logic;
        signin : in std_logic;
        exponentin : in std_logic_vector(11 downto 1);
        mantissain : in std_logic_vector(52 downto 1);
        signout : out std_logic;
        exponentout : out std_logic_vector(11 downto 1);
        mantissaout : out std_logic_vector(52 downto 1));
end dp_neg;

architecture rtl of dp_neg is
  signal sign_d, sign : std_logic_vector(0 downto 0);
begin
  -- sign
  sign_d(0) <= not signin;

  sign_0 : entity work.xfc_register generic map (1, 1) port map (sysclk, enable, sign_d, sign);
  sign_1 : entity work.xfc_register generic map (11, 1) port map (sysclk, enable, exponentin, exponentout);
  sign_2 : entity work.xfc_register generic map (52, 1) port map (sysclk, enable, mantissain, mantissaout);
  signout <= sign(0);
end rtl;
